// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/applicationstyle.h"

#include <QtGui/qguiapplication.h>
#include <QtTest/qtest.h>

#include <array>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::array groups{QPalette::Active, QPalette::Inactive, QPalette::Disabled};

} // namespace

class TestApplicationStyle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void styleSheets_data();
    void styleSheets();
    void lightSelection();
    void darkSelection();
    void restIsThePresentPalette();
    void textTellsTheMode();
};

void TestApplicationStyle::styleSheets_data()
{
    QTest::addColumn<ApplicationStyle::Mode>("mode");
    QTest::addColumn<QString>("sheet");

    QTest::newRow("light")
        << ApplicationStyle::Light
        << u"QToolTip { color: #000000; background-color: #f0f0f0; border: 1px solid #bbbbbb; }"
           "QMenu {background-color: #f0f0f0;  border: 1px solid #bbbbbb; min-width: 180px; "
           "border-radius: 8px;}"
           "QMenu::item {margin: 3px; padding: 3px; padding-left: 8px; padding-right: 32px; "
           "background-color: transparent;}"
           "QMenu::item::selected {background: #e1e1e1}"
           "QMenu::separator {height: 1px; background: #bbbbbb; margin-left: 3px; margin-right: "
           "3px;}"
           "QMenu::indicator:checked {image: url(:/images/check_black.svg); width: 16px;}"_s;
    QTest::newRow("dark")
        << ApplicationStyle::Dark
        << u"QToolTip { color: #ffffff; background-color: #2a82da; border: 1px solid white;}"
           "QMenu {background-color: #2d2d2d;  border: 1px solid gray; min-width: 180px; "
           "border-radius: 10px;}"
           "QMenu::item {margin: 3px; padding: 3px; padding-left: 8px; padding-right: 32px; "
           "background-color: transparent;}"
           "QMenu::item::selected {background: #404040}"
           "QMenu::separator {height: 1px; background: #666666; margin-left: 3px; margin-right: "
           "3px;}"
           "QMenu::indicator:checked {image: url(:/images/check_white.svg); width: 16px;}"
           "QComboBox QAbstractItemView { border: 1px solid gray; }"_s;
}

void TestApplicationStyle::styleSheets()
{
    QFETCH(ApplicationStyle::Mode, mode);
    QTEST(ApplicationStyle::styleSheet(mode), "sheet");
}

void TestApplicationStyle::lightSelection()
{
    const QPalette palette = ApplicationStyle::palette(ApplicationStyle::Light);
    for (const auto group : groups) {
        QCOMPARE(palette.brush(group, QPalette::HighlightedText), QBrush(Qt::black));
        QCOMPARE(palette.brush(group, QPalette::Highlight), QBrush(QColor(225, 225, 225)));
    }
}

void TestApplicationStyle::darkSelection()
{
    const QPalette palette = ApplicationStyle::palette(ApplicationStyle::Dark);
    for (const auto group : groups)
        QCOMPARE(palette.brush(group, QPalette::Highlight), QBrush(QColor(64, 64, 64)));
    QCOMPARE(palette.brush(QPalette::Disabled, QPalette::HighlightedText),
        QBrush(QColor(127, 127, 127)));
    QCOMPARE(palette.color(QPalette::Active, QPalette::HighlightedText),
        QGuiApplication::palette().color(QPalette::Active, QPalette::HighlightedText));
}

void TestApplicationStyle::restIsThePresentPalette()
{
    for (const auto mode : {ApplicationStyle::Light, ApplicationStyle::Dark})
        QCOMPARE(ApplicationStyle::palette(mode).color(QPalette::Base),
            QGuiApplication::palette().color(QPalette::Base));
}

void TestApplicationStyle::textTellsTheMode()
{
    QCOMPARE(ApplicationStyle::modeOfText(Qt::white), ApplicationStyle::Dark);
    QCOMPARE(ApplicationStyle::modeOfText(QColor(0xfc, 0xfc, 0xfc)), ApplicationStyle::Light);
    QCOMPARE(ApplicationStyle::modeOfText(Qt::black), ApplicationStyle::Light);
}

QTEST_MAIN(TestApplicationStyle)
#include "tst_applicationstyle.moc"
