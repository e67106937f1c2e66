// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qregularexpression.h>
#include <QtTest/qtest.h>

/// Lets every warning fail the test but those of the offscreen platform about what it cannot do
/// with windows.
inline void failOnRealWarning()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support)")));
}
