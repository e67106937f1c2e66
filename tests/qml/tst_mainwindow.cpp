// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/qml/documents.h"

#include <QtCore/qpointer.h>
#include <QtCore/qregularexpression.h>
#include <QtQml/qqmllist.h>
#include <QtTest/qsignalspy.h>

#include <private/qquickimagebase_p.h>

#include <algorithm>

using namespace Qt::StringLiterals;

class tst_MainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void startsHiddenAndSquare();
    void itemsStandInOrder();
    void gripLayerHasItsProperties();
    void areasTakeTheirInput();
    void touchAreaStartsFromTheWindow();
    void followsItsSettings();
    void knowsTheObjects();
    void worksWithoutObjects();
    void holdsTheFace();
    void everyFrameHasAllPictures();
    void scriptFunctionsTakeAnyValue();
    void resizeTakesTheWidth();
    void autoResizeFollowsTheDpi_data();
    void autoResizeFollowsTheDpi();
    void autoResizePassesThroughOnePixelMore();
    void correctsAspectRatio_data();
    void correctsAspectRatio();
    void asksTheManager_data();
    void asksTheManager();
    void updatesTheMaskOnRequest();
    void collectsGarbageOnRequest();
    void savesThroughTheDelayedSaveOnly();
    void quitsOnRequest();

private:
    void load(Documents::Context context);
    QQuickItem *face() const;
    QObject *root() const { return m_root.get(); }

    std::unique_ptr<Documents> m_documents;
    std::unique_ptr<QObject> m_root;
    QQuickWindow *m_window = nullptr; // the root
};

void tst_MainWindow::init()
{
    failOnRealWarning();
    load(Documents::AllObjects);
}

void tst_MainWindow::load(Documents::Context context)
{
    cleanup();
    m_documents = std::make_unique<Documents>(context);
    m_root = m_documents->create(u"main.qml"_s);
    m_window = qobject_cast<QQuickWindow *>(m_root.get());
    QVERIFY(m_window);
}

void tst_MainWindow::cleanup()
{
    m_root.reset();
    m_documents.reset();
}

void tst_MainWindow::startsHiddenAndSquare()
{
    QVERIFY(!m_window->isVisible());
    QCOMPARE(m_window->size(), QSize(320, 320));
    QCOMPARE(m_window->flags() & ~Qt::WindowType_Mask,
        Qt::FramelessWindowHint | Qt::CustomizeWindowHint);
    QCOMPARE(m_window->title(), u"Vesper"_s);
    QCOMPARE(m_window->opacity(), 1.0);
    QCOMPARE(m_window->color(), QColor(Qt::transparent));
    QCOMPARE(root()->property("limitMin").toReal(), 72.0);
    QCOMPARE(root()->property("limitMax").toReal(), 7680.0);
}

// Later ones are above earlier ones and get the pointer first.
void tst_MainWindow::itemsStandInOrder()
{
    struct Row {
        const char *type;
        const char *id; // or the id of the grip that it belongs to
    };
    constexpr Row rows[] = {
        {"QQuickRectangle", "itemRoot"},
        {"QQuickLoader", nullptr},
        {"QQuickMouseArea", "mouseArea"},
        {"QQuickMouseArea", "resizeHandleTopLeft"},
        {"QQuickMouseArea", "resizeHandleTopRight"},
        {"QQuickMouseArea", "resizeHandleBottomRight"},
        {"QQuickMouseArea", "resizeHandleBottomLeft"},
        {"QQuickMultiPointTouchArea", "multiPointTouchArea"},
        {"QQuickMultiPointTouchArea", "bottomRightTouchArea"},
        {"QQuickMultiPointTouchArea", "topRightTouchArea"},
        {"QQuickMultiPointTouchArea", "bottomLeftTouchArea"},
        {"QQuickMultiPointTouchArea", "topLeftTouchArea"},
    };
    const QList<QQuickItem *> items = m_window->contentItem()->childItems();
    QCOMPARE(items.size(), qsizetype(std::size(rows)));
    for (qsizetype i = 0; i < items.size(); ++i) {
        QVERIFY2(items.at(i)->inherits(rows[i].type), items.at(i)->metaObject()->className());
        QCOMPARE(items.at(i)->z(), 0.0);
        if (!rows[i].id)
            continue;
        const QVariant handle = items.at(i)->property("handle");
        const auto *named = byId<QQuickItem>(root(), QLatin1StringView(rows[i].id));
        const bool isGrip = named->inherits("QQuickImage");
        QCOMPARE(isGrip ? handle.value<QQuickItem *>() : items.at(i), named);
    }
}

void tst_MainWindow::gripLayerHasItsProperties()
{
    const auto *layer = byId<QQuickItem>(root(), u"itemRoot"_s);
    QCOMPARE(layer->property("source").toString(), m_documents->theme.resizeGrip());
    QCOMPARE(layer->property("size"), QVariant(32.0));
    QCOMPARE(layer->property("color").value<QColor>(), QColor(Qt::transparent));
    const QList<QQuickItem *> grips = layer->childItems();
    QCOMPARE(grips.size(), 4);
    for (const auto &[index, id] :
        {std::pair(0, u"resizeHandleTopLeft"_s), {1, u"resizeHandleTopRight"_s},
            {2, u"resizeHandleBottomRight"_s}, {3, u"resizeHandleBottomLeft"_s}}) {
        QCOMPARE(grips.at(index), byId<QQuickItem>(root(), id));
        QVERIFY(grips.at(index)->property("img").isNull()); // the window has not been shown
    }
    load(Documents::NoObjects);
    QCOMPARE(byId(root(), u"itemRoot"_s)->property("source").toString(), QString());
}

void tst_MainWindow::areasTakeTheirInput()
{
    const auto *mouseArea = byId(root(), u"mouseArea"_s);
    QCOMPARE(mouseArea->property("acceptedButtons").toInt(), Qt::LeftButton | Qt::RightButton);
    const QList<QQuickItem *> items = m_window->contentItem()->childItems();
    for (const bool resizeEnabled : {true, false}) {
        m_documents->config.setResizeEnabled(resizeEnabled);
        for (QQuickItem *item : items) {
            if (!item->inherits("QQuickMultiPointTouchArea"))
                continue;
            QCOMPARE(item->property("mouseEnabled"), QVariant(false));
            const bool isCorner = item->property("handle").isValid();
            QCOMPARE(item->isEnabled(), resizeEnabled || !isCorner);
            const QQmlListReference points(item, "touchPoints");
            QCOMPARE(points.size(), isCorner ? 1 : 2);
        }
    }
    load(Documents::NoObjects);
    QVERIFY(!byId<QQuickItem>(root(), u"topLeftTouchArea"_s)->isEnabled());
}

void tst_MainWindow::touchAreaStartsFromTheWindow()
{
    const QObject *area = byId(root(), u"multiPointTouchArea"_s);
    for (const auto *name : {"currentAxis", "startedAxis", "startX", "startY"})
        QCOMPARE(area->property(name), QVariant(0));
    QCOMPARE(area->property("startedPoint"), QVariant(QPointF(0, 0)));
    QCOMPARE(area->property("windowStartRect").toRectF(), QRectF(m_window->geometry()));
    m_window->setGeometry(30, 40, 200, 200); // it follows as long as nobody has set it
    QCOMPARE(area->property("windowStartRect").toRectF(), QRectF(30, 40, 200, 200));
    QCOMPARE(area->property("isFixed"), QVariant(false));
    m_documents->config.setFixed(true);
    QCOMPARE(area->property("isFixed"), QVariant(true));
}

void tst_MainWindow::followsItsSettings()
{
    m_documents->config.setOpacity(0.5);
    QCOMPARE(m_window->opacity(), 0.5);
    m_documents->config.setResizeEnabled(true);
    QCOMPARE(m_window->color().rgba(), QColor::fromRgbF(0, 0, 0, 0.3f).rgba());
    m_documents->config.setResizeEnabled(false);
    QCOMPARE(m_window->color(), QColor(Qt::transparent));
}

void tst_MainWindow::knowsTheObjects()
{
    QCOMPARE(root()->property("cfg").value<QObject *>(), &m_documents->config);
    QCOMPARE(root()->property("mgr").value<QObject *>(), &m_documents->manager);
    QCOMPARE(root()->property("tme").value<QObject *>(), &m_documents->theme);
}

void tst_MainWindow::worksWithoutObjects()
{
    load(Documents::NoObjects);
    QCOMPARE(m_window->opacity(), 1.0);
    QCOMPARE(m_window->color(), QColor(Qt::transparent));
    m_window->show();
    m_window->resize(300, 200);
    for (const auto *function :
        {"saveConfig", "lazySaveConfig", "updateMask", "clearMask", "correctAspectRatio"})
        QVERIFY(QMetaObject::invokeMethod(root(), function));
    QVERIFY(QMetaObject::invokeMethod(root(), "resize", QVariant(QSizeF(100, 100))));
    QVERIFY(QMetaObject::invokeMethod(root(), "autoResize", QVariant(144.0)));
    QCOMPARE(m_window->size(), QSize(300, 200));
}

void tst_MainWindow::holdsTheFace()
{
    const QQuickItem *face = this->face();
    QVERIFY(face);
    m_window->show();
    for (const int side : {320, 400}) {
        m_window->resize(side, side);
        QTRY_COMPARE(face->size(), QSizeF(side, side));
    }
}

void tst_MainWindow::everyFrameHasAllPictures()
{
    QList<QQuickImageBase *> images;
    for (QQuickItem *item : face()->childItems()) {
        if (auto *image = qobject_cast<QQuickImageBase *>(item))
            images += image;
    }
    QCOMPARE(images.size(), 6);
    int frames = 0;
    int framesWhileLoading = 0;
    int gaps = 0;
    connect(m_window, &QQuickWindow::afterSynchronizing, this, [&] {
        ++frames;
        for (const QQuickImageBase *image : std::as_const(images)) {
            framesWhileLoading += image->status() == QQuickImageBase::Loading;
            gaps += image->image().isNull();
        }
    });
    m_window->show();
    QTRY_VERIFY(frames > 0);
    for (int step = 1; step <= 20; ++step) {
        const int before = frames;
        m_window->resize(320 + step, 320 + step);
        if (step % 5 == 0)
            m_documents->theme.changeColorTone(
                u"Basic"_s, step % 2 ? u"DarkRed"_s : u"LightBlue"_s);
        QTRY_VERIFY(frames > before);
    }
    QCOMPARE(gaps, 0);
    QVERIFY(framesWhileLoading > 0); // or nothing would have been seen here
}

// The item of the window's loader.
QQuickItem *tst_MainWindow::face() const
{
    const auto isLoader = [](const QQuickItem *item) { return item->inherits("QQuickLoader"); };
    const auto children = m_window->contentItem()->childItems();
    const auto loader = std::find_if(children.begin(), children.end(), isLoader);
    if (loader == children.end())
        return nullptr;
    const QUrl source = (*loader)->property("source").toUrl();
    if (source != QUrl(u"qrc:/qt/qml/vesper/qml/BasicClock.qml"_s))
        return nullptr;
    return (*loader)->property("item").value<QQuickItem *>();
}

// A size of whole pixels or not, a number of any type.
void tst_MainWindow::scriptFunctionsTakeAnyValue()
{
    for (const QVariant &size : {QVariant(QSize(200, 500)), QVariant(QSizeF(200, 500))}) {
        m_window->resize(320, 320);
        QVERIFY(QMetaObject::invokeMethod(root(), "resize", size));
        QCOMPARE(m_window->size(), QSize(200, 200));
    }
    for (const QVariant &dpi : {QVariant(144), QVariant(144.0)}) {
        m_window->resize(320, 320);
        QVERIFY(QMetaObject::invokeMethod(root(), "autoResize", dpi));
        QCOMPARE(m_window->size(), QSize(480, 480));
    }
    QVariant distance;
    QObject *touch = byId(root(), u"multiPointTouchArea"_s);
    QVERIFY(QMetaObject::invokeMethod(touch, "getAixis", qReturnArg(distance)));
    QCOMPARE(distance, QVariant(0));
}

void tst_MainWindow::resizeTakesTheWidth()
{
    Q_EMIT m_documents->manager.callJavaScriptResize({200, 500});
    QCOMPARE(m_window->size(), QSize(200, 200));
    QCOMPARE(m_documents->manager.calls, QStringList{u"updateMask"_s});
}

void tst_MainWindow::autoResizeFollowsTheDpi_data()
{
    QTest::addColumn<double>("dpi");
    QTest::addColumn<int>("side");
    QTest::newRow("grows") << 144.0 << 480;
    QTest::newRow("shrinks") << 48.0 << 160;
    QTest::newRow("stays") << 96.0 << 320;
    QTest::newRow("cut toward zero") << 96.2 << 320; // 320.67
    QTest::newRow("no lower limit") << 12.0 << 40;
}

void tst_MainWindow::autoResizeFollowsTheDpi()
{
    QFETCH(double, dpi);
    QFETCH(int, side);
    Q_EMIT m_documents->manager.callJavaScriptAutoResize(dpi);
    QCOMPARE(m_window->size(), QSize(side, side));
    QCOMPARE(m_documents->manager.calls, (QStringList{u"clearMask"_s, u"updateMask"_s}));
}

void tst_MainWindow::autoResizePassesThroughOnePixelMore()
{
    QList<int> widths;
    connect(m_window, &QWindow::widthChanged, this, [&widths](int width) { widths += width; });
    Q_EMIT m_documents->manager.callJavaScriptAutoResize(144);
    QCOMPARE(widths, (QList<int>{481, 480}));
    widths.clear();
    Q_EMIT m_documents->manager.callJavaScriptAutoResize(96); // a real change of size all the same
    QCOMPARE(widths, (QList<int>{481, 480}));
}

void tst_MainWindow::correctsAspectRatio_data()
{
    QTest::addColumn<QSize>("before");
    QTest::addColumn<int>("side");
    QTest::newRow("mean") << QSize(300, 200) << 250;
    QTest::newRow("half cut off") << QSize(301, 200) << 250;
    QTest::newRow("clamped first") << QSize(50, 100) << 86;
    QTest::newRow("clamped above") << QSize(8000, 7000) << 7340;
}

void tst_MainWindow::correctsAspectRatio()
{
    QFETCH(QSize, before);
    QFETCH(int, side);
    m_window->resize(before);
    QVERIFY(QMetaObject::invokeMethod(root(), "correctAspectRatio"));
    QCOMPARE(m_window->size(), QSize(side, side));
    QCOMPARE(m_documents->manager.takeCalls(u"updateMask"_s), 1);

    QVERIFY(QMetaObject::invokeMethod(root(), "correctAspectRatio")); // square already
    QCOMPARE(m_documents->manager.calls, QStringList());
}

void tst_MainWindow::asksTheManager_data()
{
    QTest::addColumn<QString>("function");
    for (const auto *function : {"lazySaveConfig", "updateMask", "clearMask"})
        QTest::newRow(function) << QString::fromLatin1(function);
}

void tst_MainWindow::asksTheManager()
{
    QFETCH(QString, function);
    QVERIFY(QMetaObject::invokeMethod(root(), function.toLatin1().constData()));
    QCOMPARE(m_documents->manager.calls, QStringList{function});
}

void tst_MainWindow::updatesTheMaskOnRequest()
{
    Q_EMIT m_documents->manager.callJavaScriptUpdateMask();
    QCOMPARE(m_documents->manager.calls, QStringList{u"updateMask"_s});
}

void tst_MainWindow::collectsGarbageOnRequest()
{
    QJSEngine &engine = m_documents->engine;
    // An object that scripts own goes with the first collection after its last use.
    QPointer<QObject> garbage(new QObject);
    QVERIFY(engine.newQObject(garbage).isQObject());
    QJSEngine::setObjectOwnership(garbage, QJSEngine::JavaScriptOwnership);
    Q_EMIT m_documents->manager.callJavaScriptGC();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTRY_VERIFY(!garbage);
}

// The function asks for a method that the manager does not have: meant so, and called by nobody.
void tst_MainWindow::savesThroughTheDelayedSaveOnly()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"seveConfig.*is not a function"_s));
    QMetaObject::invokeMethod(root(), "saveConfig");
    QCOMPARE(m_documents->manager.calls, QStringList());
}

void tst_MainWindow::quitsOnRequest()
{
    QSignalSpy quit(&m_documents->engine, &QQmlEngine::quit);
    Q_EMIT m_documents->manager.quitByQml();
    QCOMPARE(quit.size(), 1);
}

int main(int argc, char **argv) { return runQmlTest<tst_MainWindow>(argc, argv); }

#include "tst_mainwindow.moc"
