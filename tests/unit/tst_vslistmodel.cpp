// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "theme/vslistmodel.h"
#include "theme/vstheme.h"

#include <QtCore/qmetaobject.h>
#include <QtTest/qtest.h>

#include <limits>

using namespace Qt::StringLiterals;

class TestVsListModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void metaObject();
    void roleNames();
    void listsTheTonesInOrder();
    void everyOtherRoleIsTheDisplayName_data();
    void everyOtherRoleIsTheDisplayName();
    void indexNumber_data();
    void indexNumber();
    void emptyBeforeATone();
    void rowOutOfRange_data();
    void rowOutOfRange();
    void parentAndColumnAreIgnored();
    void indexIsNotChecked();
    void listsTheThemes();
    void otherKindIsEmpty_data();
    void otherKindIsEmpty();
    void changeOfToneEmitsNothing();
};

namespace
{

struct Catalogue {
    explicit Catalogue(const QString &tone = u"DarkBlue"_s)
    {
        root.buildThemeTable();
        root.changeColorTone(u"Basic"_s, tone);
    }
    VsTheme root;
    VsListModel tones{&root, 2};
    VsListModel themes{&root, 1};
};

} // namespace

void TestVsListModel::metaObject()
{
    const QMetaObject &meta = VsListModel::staticMetaObject;
    QCOMPARE(meta.superClass(), &QAbstractListModel::staticMetaObject);
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 1);
    const QMetaProperty count = meta.property(meta.propertyOffset());
    QCOMPARE(count.name(), "count");
    QCOMPARE(count.typeName(), "int");
    QVERIFY(!count.isWritable());
    QVERIFY(!count.hasNotifySignal());
    QVERIFY(!count.isConstant());

    QList<QByteArray> methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Method);
        methods.append(meta.method(i).typeName() + (' ' + meta.method(i).methodSignature()));
    }
    QCOMPARE(methods,
        (QList<QByteArray>{
            "int rowCount(QModelIndex)", "int rowCount()", "qsizetype getIndexNumber(QString)"}));
}

void TestVsListModel::roleNames()
{
    const Catalogue catalogue;
    QHash<int, QByteArray> expected{{257, "name"}, {258, "displayName"}};
    expected.insert(QHash<int, QByteArray>{
        {Qt::DisplayRole, "display"},
        {Qt::DecorationRole, "decoration"},
        {Qt::EditRole, "edit"},
        {Qt::ToolTipRole, "toolTip"},
        {Qt::StatusTipRole, "statusTip"},
        {Qt::WhatsThisRole, "whatsThis"},
    });
    QCOMPARE(catalogue.tones.roleNames(), expected);
    QCOMPARE(catalogue.themes.roleNames(), expected);
}

void TestVsListModel::listsTheTonesInOrder()
{
    const Catalogue catalogue;
    QCOMPARE(catalogue.tones.property("count").toInt(), 10);
    QStringList names;
    QStringList displayNames;
    for (int row = 0; row < catalogue.tones.rowCount(); ++row) {
        names.append(catalogue.tones.data(catalogue.tones.index(row), 257).toString());
        displayNames.append(catalogue.tones.data(catalogue.tones.index(row), 258).toString());
    }
    QCOMPARE(names,
        QStringList({u"DarkBlue"_s, u"DarkRed"_s, u"DarkGreen"_s, u"DarkYellow"_s, u"DarkGray"_s,
            u"LightBlue"_s, u"LightRed"_s, u"LightGreen"_s, u"LightYellow"_s, u"LightGray"_s}));
    QCOMPARE(displayNames,
        QStringList({u"Dark Blue"_s, u"Dark Red"_s, u"Dark Green"_s, u"Dark Yellow"_s,
            u"Dark Gray"_s, u"Light Blue"_s, u"Light Red"_s, u"Light Green"_s, u"Light Yellow"_s,
            u"Light Gray"_s}));
}

void TestVsListModel::everyOtherRoleIsTheDisplayName_data()
{
    QTest::addColumn<int>("role");
    QTest::newRow("displayName") << 258;
    QTest::newRow("display") << int(Qt::DisplayRole);
    QTest::newRow("decoration") << int(Qt::DecorationRole);
    QTest::newRow("first user role") << int(Qt::UserRole);
    QTest::newRow("unknown") << 9999;
    QTest::newRow("negative") << -1;
}

void TestVsListModel::everyOtherRoleIsTheDisplayName()
{
    QFETCH(const int, role);
    const Catalogue catalogue;
    const QVariant value = catalogue.tones.data(catalogue.tones.index(3), role);
    QCOMPARE(value.typeId(), int(QMetaType::QString));
    QCOMPARE(value.toString(), u"Dark Yellow"_s);
}

void TestVsListModel::indexNumber_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<qsizetype>("expected");
    QTest::newRow("first") << u"DarkBlue"_s << qsizetype(0);
    QTest::newRow("in the middle") << u"LightBlue"_s << qsizetype(5);
    QTest::newRow("last") << u"LightGray"_s << qsizetype(9);
    QTest::newRow("lower case") << u"lightblue"_s << qsizetype(-1);
    QTest::newRow("display name") << u"Light Blue"_s << qsizetype(-1);
    QTest::newRow("empty") << QString() << qsizetype(-1);
}

void TestVsListModel::indexNumber()
{
    QFETCH(const QString, name);
    QFETCH(const qsizetype, expected);
    Catalogue catalogue;
    QCOMPARE(catalogue.tones.getIndexNumber(name), expected);
    qsizetype invoked = 0;
    QVERIFY(
        QMetaObject::invokeMethod(&catalogue.tones, "getIndexNumber", qReturnArg(invoked), name));
    QCOMPARE(invoked, expected);
}

void TestVsListModel::emptyBeforeATone()
{
    const Catalogue catalogue(u"no such tone"_s);
    QCOMPARE(catalogue.root.currentTheme(), QString());
    QCOMPARE(catalogue.tones.rowCount(), 0);
    QCOMPARE(catalogue.tones.count(), 0);
    QCOMPARE(catalogue.tones.getIndexNumber(u"DarkBlue"_s), -1);
    QCOMPARE(catalogue.tones.getIndexNumber(QString()), -1);
    QVERIFY(!catalogue.tones.data(catalogue.tones.index(0), 257).isValid());
}

void TestVsListModel::rowOutOfRange_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("after the last") << 10;
    QTest::newRow("before the first") << -1;
    QTest::newRow("far away") << std::numeric_limits<int>::max();
}

void TestVsListModel::rowOutOfRange()
{
    QFETCH(const int, row);
    const Catalogue catalogue;
    QVERIFY(!catalogue.tones.data(catalogue.tones.index(row), 257).isValid());
    QVERIFY(!catalogue.tones.data(catalogue.tones.index(row), 258).isValid());
    QVERIFY(!catalogue.themes.data(catalogue.themes.index(row), 257).isValid());
}

void TestVsListModel::parentAndColumnAreIgnored()
{
    const Catalogue catalogue;
    const QModelIndex third = catalogue.tones.index(3);
    QCOMPARE(catalogue.tones.rowCount(third), 10);
    QCOMPARE(
        catalogue.tones.data(catalogue.tones.index(3, 7, third), 257).toString(), u"DarkYellow"_s);
    QCOMPARE(catalogue.tones.parent(third), QModelIndex());
    QVERIFY(!catalogue.tones.data(QModelIndex(), 257).isValid());
}

void TestVsListModel::indexIsNotChecked()
{
    const Catalogue catalogue;
    const QModelIndex index = catalogue.tones.index(99, 98);
    QVERIFY(index.isValid());
    QCOMPARE(index.row(), 99);
    QCOMPARE(index.column(), 98);
    QCOMPARE(index.model(), &catalogue.tones);
}

void TestVsListModel::listsTheThemes()
{
    const Catalogue catalogue(u"no such tone"_s);
    QCOMPARE(catalogue.themes.rowCount(), 1);
    QCOMPARE(catalogue.themes.data(catalogue.themes.index(0), 257).toString(), u"Basic"_s);
    QCOMPARE(catalogue.themes.data(catalogue.themes.index(0), 258).toString(), u"Basic"_s);
    QCOMPARE(catalogue.themes.getIndexNumber(u"Basic"_s), -1);
    QCOMPARE(catalogue.themes.getIndexNumber(u"DarkBlue"_s), -1);
}

void TestVsListModel::otherKindIsEmpty_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("0") << 0;
    QTest::newRow("3") << 3;
    QTest::newRow("-1") << -1;
}

void TestVsListModel::otherKindIsEmpty()
{
    QFETCH(const int, kind);
    const Catalogue catalogue;
    const VsListModel model(&catalogue.root, kind);
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.getIndexNumber(u"DarkBlue"_s), -1);
    QVERIFY(!model.data(model.index(0), 257).isValid());
}

void TestVsListModel::changeOfToneEmitsNothing()
{
    Catalogue catalogue;
    const QAbstractItemModel *const model = &catalogue.tones;
    int emissions = 0;
    const auto count = [&] { ++emissions; };
    connect(model, &QAbstractItemModel::modelReset, this, count);
    connect(model, &QAbstractItemModel::dataChanged, this, count);
    connect(model, &QAbstractItemModel::layoutChanged, this, count);
    connect(model, &QAbstractItemModel::rowsInserted, this, count);
    catalogue.root.changeColorTone(u"Basic"_s, u"LightRed"_s);
    catalogue.root.buildThemeTable();
    QCOMPARE(emissions, 0);
    QCOMPARE(catalogue.themes.rowCount(), 2);
}

QTEST_GUILESS_MAIN(TestVsListModel)
#include "tst_vslistmodel.moc"
