// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// A licence text beside the program, as the dialog shows it.

#include "fuzztarget.h"

#include "dialogs/vslicensedialog.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>
#include <QtCore/qmetaobject.h>
#include <QtGui/qtextdocument.h>
#include <QtWidgets/qapplication.h>
#include <QtWidgets/qtextbrowser.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

struct World {
    World()
    {
        makeApplication<QApplication>();
        dialog = new VsLicenseDialog;
        browser = dialog->findChild<QTextBrowser *>();
        const QDir folder(QCoreApplication::applicationDirPath());
        folder.mkdir(u"LICENSE"_s);
        file = folder.filePath(u"LICENSE/License_en.txt"_s);
    }

    VsLicenseDialog *dialog;
    QTextBrowser *browser;
    QString file;
};

bool isPlain(char character) { return character == '\n' || (character >= ' ' && character < 127); }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const World world;
    const auto text
        = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    QFile file(world.file);
    mustHold(file.open(QIODevice::WriteOnly) && file.write(text) == text.size(), "a place for it");
    file.close();

    world.browser->clear();
    QMetaObject::invokeMethod(world.dialog, "readLicense");
    const QString shown = world.browser->toPlainText();
    mustHold(shown.startsWith("--- License_en.txt ---"_L1), "the text has a heading");
    if (std::all_of(text.begin(), text.end(), isPlain))
        mustHold(shown.contains(QLatin1StringView(text)), "a plain text is shown as it is");
    const QList<QTextFormat> formats = world.browser->document()->allFormats();
    for (const QTextFormat &format : formats) {
        mustHold(
            !format.isImageFormat() && !format.isTableFormat() && !format.toCharFormat().isAnchor(),
            "markup is shown and not followed");
    }
    return 0;
}
