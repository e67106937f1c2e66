// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qregularexpression.h>
#include <QtTest/qtest.h>

/// Lets every warning fail the test but those about what a platform cannot do with windows: masks
/// on the offscreen one, places beyond 16 bits on Windows; and about what Wine's TLS does not tell.
inline void failOnRealWarning()
{
    QTest::failOnWarning(QRegularExpression(
        QStringLiteral("^(?!This plugin does not support|setGeometry: Unable to set geometry"
                       "|Failed to enumerate ciphers)")));
}
