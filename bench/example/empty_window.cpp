// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// A window of Qt Quick with nothing in it but a square, by which it is seen to be painted, and an
// icon in the tray: what a clock that is made of them costs before it shows anything. empty_window
// SIDE PLACE, both in pixels.

#include <QtGui/qpixmap.h>
#include <QtQml/qqmlapplicationengine.h>
#include <QtWidgets/qapplication.h>
#include <QtWidgets/qsystemtrayicon.h>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QPixmap picture(16, 16);
    picture.fill(Qt::gray);
    QSystemTrayIcon icon(picture);
    icon.show();
    const QStringList arguments = QApplication::arguments();
    const int side = arguments.value(1).toInt();
    const int place = arguments.value(2).toInt();
    QQmlApplicationEngine engine;
    engine.setInitialProperties({{QStringLiteral("x"), place}, {QStringLiteral("y"), place},
        {QStringLiteral("width"), side}, {QStringLiteral("height"), side}});
    engine.loadData("import QtQuick\n"
                    "Window {\n"
                    "    flags: Qt.FramelessWindowHint; visible: true\n"
                    "    Rectangle { color: 'gray'; width: parent.width / 2; height: width }\n"
                    "}\n");
    return QApplication::exec();
}
