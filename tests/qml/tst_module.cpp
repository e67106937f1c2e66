// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/qml/documents.h"

#include <QtCore/qdiriterator.h>
#include <QtCore/qfile.h>
#include <QtQml/qqmlcomponent.h>

#include <private/qqmlcomponent_p.h>
#include <private/qqmlmetatype_p.h>

using namespace Qt::StringLiterals;

namespace
{

// All that the module can name, in its order.
const QStringList componentNames{u"BasicClock"_s, u"ClockImage"_s, u"ContextMenu"_s, u"Settings"_s,
    u"OpacitySlider"_s, u"ExpandButton"_s, u"ExpandArea"_s, u"VsComboBox"_s, u"VsScrollButton"_s};

QStringList filesBelow(const QString &folder)
{
    QStringList files;
    QDirIterator iterator(folder, QDir::Files, QDirIterator::Subdirectories);
    while (iterator.hasNext())
        files += iterator.next();
    files.sort();
    return files;
}

// A member or a function, depending on the version of Qt.
template <typename Component> auto compilationUnit(Component *component)
{
    if constexpr (requires { component->compilationUnit(); })
        return component->compilationUnit();
    else
        return component->compilationUnit;
}

QString documentPath(const QString &component)
{
    return u":/qt/qml/vesper/qml/"_s + component + u".qml"_s;
}

QStringList themeFiles()
{
    QStringList files;
    for (const auto lightness : {"dark"_L1, "light"_L1}) {
        for (const auto colour : {"blue"_L1, "gray"_L1, "green"_L1, "red"_L1, "yellow"_L1}) {
            const QString folder
                = QStringLiteral(":/themes/basic/%1_%2/clock_").arg(lightness, colour);
            QStringList layers{u"base"_s, u"background"_s, u"resize_grip"_s};
            if (colour == "gray"_L1)
                layers += {u"dial"_s, u"hand_hour"_s, u"hand_minute"_s, u"hand_second"_s};
            for (const QString &layer : std::as_const(layers))
                files += folder + layer + u".svg"_s;
        }
    }
    files.sort();
    return files;
}

QStringList imageFiles()
{
    QStringList files;
    for (const auto *name : {"app_icon", "app_tray_icon_tmpl", "check_black", "check_white",
             "marrowby_logo_gray", "reset_to_default", "tolower_black", "tolower_white",
             "toright_black", "toright_white", "toupper_black", "toupper_white"})
        files += QStringLiteral(":/images/%1.svg").arg(QLatin1StringView(name));
    return files;
}

} // namespace

class tst_Module : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnRealWarning(); }
    void qmldirNamesEveryComponentInOrder();
    void resourcesAreComplete_data();
    void resourcesAreComplete();
    void greyTonesAloneHaveDialAndHands();
    void componentsResolve_data();
    void componentsResolve();
    void mainIsNoComponent();
    void documentsAreCompiled_data();
    void documentsAreCompiled();
    void importsResolve_data();
    void importsResolve();
};

void tst_Module::qmldirNamesEveryComponentInOrder()
{
    QByteArray expected = "module vesper\ntypeinfo Vesper.qmltypes\nprefer :/qt/qml/vesper/\n"_ba;
    for (const QString &name : componentNames)
        expected += QStringLiteral("%1 254.0 qml/%1.qml\n").arg(name).toUtf8();
    expected += '\n'; // as Qt's build functions end it

    QFile qmldir(u":/qt/qml/vesper/qmldir"_s);
    QVERIFY(qmldir.open(QIODevice::ReadOnly));
    QByteArray actual = qmldir.readAll();
#if QT_VERSION >= QT_VERSION_CHECK(6, 9, 0)
    actual.replace("depends QtQuick\n", ""); // newer build functions name what is imported
#endif
    QCOMPARE(actual, expected);
}

void tst_Module::resourcesAreComplete_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QStringList>("files");

    // The type information is named in the qmldir, but serves tools only and is not carried.
    QStringList module{u":/qt/qml/vesper/qml/main.qml"_s, u":/qt/qml/vesper/qmldir"_s};
    for (const QString &name : componentNames)
        module += documentPath(name);
    module.sort();
    QTest::newRow("module") << u":/qt"_s << module;
    QTest::newRow("images") << u":/images"_s << imageFiles();
    QTest::newRow("translations") << u":/translations"_s
                                  << QStringList{u":/translations/app_ja.qm"_s};
    QTest::newRow("themes") << u":/themes"_s << themeFiles();
}

void tst_Module::resourcesAreComplete()
{
    QFETCH(QString, folder);
    QFETCH(QStringList, files);
    QCOMPARE(filesBelow(folder), files);
}

void tst_Module::greyTonesAloneHaveDialAndHands()
{
    QVERIFY(QFile::exists(u":/themes/basic/dark_gray/clock_dial.svg"_s));
    QVERIFY(!QFile::exists(u":/themes/basic/dark_red/clock_dial.svg"_s));
    QVERIFY(!QFile::exists(u":/themes/basic/light_blue/clock_hand_hour.svg"_s));
}

void tst_Module::componentsResolve_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : componentNames)
        QTest::newRow(qPrintable(name)) << name;
}

void tst_Module::componentsResolve()
{
    QFETCH(QString, name);
    Documents documents(Documents::AllObjects);
    QQmlComponent component(&documents.engine);
    component.setData("import vesper 254.0\n" + name.toUtf8() + " {}", {});
    QVERIFY2(component.isReady(), qPrintable(component.errorString()));
}

void tst_Module::mainIsNoComponent()
{
    Documents documents(Documents::NoObjects);
    for (const auto *name : {"main", "Main"}) {
        QQmlComponent component(&documents.engine);
        component.setData("import vesper 254.0\n" + QByteArray(name) + " {}", {});
        QVERIFY(component.isError());
    }
}

void tst_Module::documentsAreCompiled_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::newRow("main") << QUrl(u"qrc:/qt/qml/vesper/qml/main.qml"_s);
    for (const QString &name : componentNames)
        QTest::newRow(qPrintable(name)) << QUrl(u"qrc"_s + documentPath(name));
}

// The engine has to run the very data that the program carries, not a compilation of the source.
void tst_Module::documentsAreCompiled()
{
    QFETCH(QUrl, url);
    auto error = QQmlMetaType::CachedUnitLookupError::NoError;
    const auto *carried
        = QQmlMetaType::findCachedCompilationUnit(url, QQmlMetaType::AcceptUntyped, &error);
    QCOMPARE(error, QQmlMetaType::CachedUnitLookupError::NoError);
    QVERIFY(carried);
    QVERIFY(carried->qmlData);

    Documents documents(Documents::NoObjects);
    QQmlComponent component(&documents.engine, url);
    QVERIFY2(component.isReady(), qPrintable(component.errorString()));
    const auto unit = compilationUnit(QQmlComponentPrivate::get(&component));
    QCOMPARE(unit->unitData(), carried->qmlData);
}

void tst_Module::importsResolve_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("native menus") << "import Qt.labs.platform\nMenu {}"_ba;
    QTest::newRow("native tray icon") << "import Qt.labs.platform\nSystemTrayIcon {}"_ba;
    // Where Qt lacks the style, a folder beside the program stands in for it.
    QTest::newRow("style") << "import QtQuick.Controls.FluentWinUI3\nButton { text: \"a\" }"_ba;
    QTest::newRow("layouts") << "import QtQuick.Layouts\nGridLayout {}"_ba;
}

void tst_Module::importsResolve()
{
    QFETCH(QByteArray, text);
    Documents documents(Documents::NoObjects);
    QQmlComponent component(&documents.engine);
    component.setData(text, {});
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
}

int main(int argc, char **argv) { return runQmlTest<tst_Module>(argc, argv); }

#include "tst_module.moc"
