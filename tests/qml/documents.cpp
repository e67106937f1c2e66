// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/qml/documents.h"

#include "qml/vespermodule.h"

#include <QtCore/qregularexpression.h>
#include <QtCore/qtemporarydir.h>
#include <QtQml/qqmlcomponent.h>

using namespace Qt::StringLiterals;

void useTemporaryHome()
{
    static const QTemporaryDir home;
    for (const char *name :
        {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "APPDATA"})
        qputenv(name, home.path().toUtf8());
}

void failOnRealWarning()
{
    static const QRegularExpression realWarning(
        u"^(?!This plugin does not support setting window opacity"
        "|QSystemTrayIcon::setVisible: No Icon set"
        "|QObject::connect: No such signal QPlatformNativeInterface::systemTrayWindowChanged"
        // Intentional: the name of the property is fixed, and Qt 6.11 warns that its base has one,
        // too.
        "|Member palette of the object Vs(ComboBox|ScrollButton)_QMLTYPE_\\d+ overrides a member)"_s);
    QTest::failOnWarning(realWarning);
}

Documents::Documents(Context context)
{
    registerVesperModule();
    engine.setImportPathList(engine.importPathList() + QStringList{QStringLiteral(VESPER_IMPORTS)});
    if (context == NoObjects)
        return;
    theme.buildThemeTable();
    theme.changeColorTone(config.themeName(), config.colorToneName());
    engine.rootContext()->setContextProperty(u"manager"_s, &manager);
    engine.rootContext()->setContextProperty(u"config"_s, &config);
    engine.rootContext()->setContextProperty(u"theme"_s, &theme);
    engine.rootContext()->setContextProperty(u"themeModel"_s, &themeModel);
}

std::unique_ptr<QObject> Documents::create(const QString &document)
{
    QQmlComponent component(&engine, QUrl(u"qrc:/qt/qml/vesper/qml/"_s + document));
    std::unique_ptr<QObject> object(component.create());
    if (!object)
        qWarning().noquote() << component.errorString();
    return object;
}

QQuickItem *Documents::createFace(QQuickView &view, qreal side)
{
    auto *face = qobject_cast<QQuickItem *>(create(u"BasicClock.qml"_s).release());
    if (!face)
        return nullptr;
    face->setParent(&view);
    view.contentItem()->setSize({side, side});
    face->setParentItem(view.contentItem());
    return face;
}
