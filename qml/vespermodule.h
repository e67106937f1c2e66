// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

/// Makes the module vesper known to the QML engines of this process. To be called before the first
/// document of the module is loaded; more calls do nothing.
void registerVesperModule();
