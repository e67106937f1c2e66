// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/renderer.h"

#include <QtCore/qtenvironmentvariables.h>
#include <QtGui/qimage.h>
#include <QtQuick/qquickwindow.h>
#include <QtQuick/qsgrendererinterface.h>

namespace
{

constexpr auto backendVariable = "QT_QUICK_BACKEND";
constexpr auto noPoolVariable = "QT_NO_GUI_THREADPOOL";

// Qt's painter gives rows of pixels to a pool of threads and waits for them. Waking these for the
// pictures of a clock takes longer than painting them.
void paintWithoutThreadPool()
{
    if (qEnvironmentVariableIsSet(noPoolVariable))
        return; // even an empty value counts for Qt
    qputenv(noPoolVariable, "1");
    // Qt asks at the first use and never again, so programs that are started from here need not
    // inherit it. The use that counts is a conversion between formats, however small the image.
    QImage(1, 1, QImage::Format_RGB32).convertTo(QImage::Format_RGB16);
    qunsetenv(noPoolVariable);
}

} // namespace

void chooseRenderer()
{
    // A clock paints once a second. That is not worth a GPU context, which costs more memory than
    // the rest of the program and, where there is no GPU, more time as well.
    if (qEnvironmentVariableIsEmpty(backendVariable))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    paintWithoutThreadPool();
}
