// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// A catalogue of translations beside the program, from its file to the texts of the menu.

#include "fuzztarget.h"

#include "app/vstranslator.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>
#include <QtWidgets/qapplication.h>

#include <array>

using namespace Qt::StringLiterals;

namespace
{

// Of a language that the program's resources lack, so that nothing else answers.
constexpr auto language = "xx"_L1;

struct World {
    World()
    {
        application = makeApplication<QApplication>();
        const QDir folder(QCoreApplication::applicationDirPath());
        folder.mkdir(u"translations"_s);
        file = folder.filePath(u"translations/app_xx.qm"_s);
    }

    QApplication *application;
    QString file;
};

} // namespace

// A catalogue that does not load leaves its translator allocated, which is meant: so nobody is to
// look for leaks here. The name is the leak sanitizer's.
extern "C" int __lsan_is_turned_off() { return 1; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const World world;
    QFile file(world.file);
    mustHold(file.open(QIODevice::WriteOnly)
            && file.write(reinterpret_cast<const char *>(data), qint64(size)) == qint64(size),
        "a place for it");
    file.close();

    {
        VsTranslator translator(world.application);
        const bool isLoaded = translator.loadLanguage(language);
        constexpr std::array texts{"Quit", "Topmost", "Fixed", ""};
        for (const char *text : texts) {
            const QString shown = QCoreApplication::translate("VsManager", text);
            if (!isLoaded)
                mustHold(shown == QLatin1StringView(text), "without a catalogue the text stays");
        }
        (void)QCoreApplication::translate("VsManager", "%n", nullptr, 2);
    }
    mustHold(QCoreApplication::translate("VsManager", "Quit") == "Quit"_L1,
        "the catalogue goes with its owner");
    return 0;
}
