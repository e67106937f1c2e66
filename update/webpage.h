// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

class QUrl;

/// Whether \a url is one for a browser. What comes from the network opens nothing else.
[[nodiscard]] bool isWebPage(const QUrl &url);
