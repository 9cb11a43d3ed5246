#include "ToolBarLogic.h"

#include "LogCapture.h"
#include "TestFiles.h"

#include <QApplication>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QPointer>
#include <QToolButton>
#include <QtTest>

#include <memory>

namespace {
const QString kPlugin = QStringLiteral("TBWidgets");
const QString kSource = QStringLiteral("../../src/core/ToolBar/ToolBarLogic.cpp");
const QSize kIconSize(24, 16);
const QRgb kRed = qRgb(255, 0, 0);
const QRgb kBlue = qRgb(0, 0, 255);
const QRgb kGreen = qRgb(0, 255, 0);
const QRgb kYellow = qRgb(255, 255, 0);
const QRgb kBlack = qRgb(0, 0, 0);

// An icon whose left half has one colour and right half another, so mirroring shows.
bool writeIcon(const QString &name, QRgb left, QRgb right)
{
    QImage image(kIconSize, QImage::Format_RGB32);
    image.fill(right);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width() / 2; ++x)
            image.setPixel(x, y, left);
    const QString path =
        TestFiles::appDir() + QStringLiteral("/plugins/") + kPlugin + QLatin1Char('/') + name;
    QDir().mkpath(QFileInfo(path).absolutePath());
    return image.save(path, "PNG");
}

ToolItem toolItem(int id, const QString &resource, const QString &on, const QString &off)
{
    ToolItem item;
    item.id = id;
    item.resource = resource;
    item.enabled = on;
    item.disabled = off;
    item.search = resource.contains(QLatin1String("SEARCH"));
    return item;
}

// Left and right edge colours of a pixmap.
QPair<QRgb, QRgb> edges(const QPixmap &pixmap)
{
    const QImage image = pixmap.toImage();
    if (image.isNull())
        return {0, 0};
    const int y = image.height() / 2;
    return {image.pixel(0, y) | 0xff000000u, image.pixel(image.width() - 1, y) | 0xff000000u};
}

QPair<QRgb, QRgb> activeEdges(const QToolButton *pButton)
{
    return edges(pButton->icon().pixmap(kIconSize, QIcon::Active, QIcon::Off));
}
} // namespace

class tst_ToolBarWidgets : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void buildsButtonRow();
    void buildsSearchBox();
    void searchBoxNeedsAllThreeOutArguments();
    void enableDisableSwitchesIconAndState();
    void unknownIdChangesNothing();
    void mirroredIconsInRightToLeftLayout();
    void directionChangeShowsEnabledIcons();
    void showHideSearchBox();
    void showHideWithoutLayoutDoesNothing();
    void destroyRemovesButtonsAndGroup();
    void objectName();

private:
    bool build(bool withSearch);

    std::unique_ptr<QWidget> m_toolBar;
    QList<ToolItem> m_items;
    QButtonGroup *m_group = nullptr;
    QHBoxLayout *m_searchLayout = nullptr;
    SearchLineEdit *m_searchEdit = nullptr;
    QLabel *m_searchIcon = nullptr;
};

void tst_ToolBarWidgets::initTestCase()
{
    TestFiles::useFreshSettings();
    QVERIFY(writeIcon(QStringLiteral("new_on.png"), kRed, kBlue));
    QVERIFY(writeIcon(QStringLiteral("new_off.png"), kGreen, kGreen));
    QVERIFY(writeIcon(QStringLiteral("search_on.png"), kYellow, kBlack));
    QVERIFY(writeIcon(QStringLiteral("search_off.png"), kGreen, kBlack));
    QVERIFY(TestFiles::writeAppFile(QStringLiteral("/plugins/TBWidgets/TBWidgets_en-us.lang"),
                                    "<lang><item name=\"IDS_TB_NEW\">New message</item>"
                                    "<item name=\"IDS_TB_SEARCH\">Search</item></lang>"));
}

void tst_ToolBarWidgets::init()
{
    m_toolBar = std::make_unique<QWidget>();
    m_items = {toolItem(7, QStringLiteral("IDS_TB_NEW"), QStringLiteral("new_on.png"),
                        QStringLiteral("new_off.png")),
               toolItem(9, QStringLiteral("IDS_TB_SEARCH"), QStringLiteral("search_on.png"),
                        QStringLiteral("search_off.png"))};
    m_group = nullptr;
    m_searchLayout = nullptr;
    m_searchEdit = nullptr;
    m_searchIcon = nullptr;
}

void tst_ToolBarWidgets::cleanup()
{
    QApplication::setLayoutDirection(Qt::LeftToRight);
    // The search box belongs to the caller while it is not shown.
    if (m_searchLayout && !m_searchLayout->parent()) {
        delete m_searchLayout;
        if (m_searchEdit && !m_searchEdit->parent())
            delete m_searchEdit;
        if (m_searchIcon && !m_searchIcon->parent())
            delete m_searchIcon;
    }
    m_toolBar.reset();
}

bool tst_ToolBarWidgets::build(bool withSearch)
{
    if (withSearch)
        return ToolBarLogic::CreateToolBar(kPlugin, m_toolBar.get(), m_items, &m_group,
                                           &m_searchLayout, &m_searchEdit, &m_searchIcon);
    return ToolBarLogic::CreateToolBar(kPlugin, m_toolBar.get(), m_items, &m_group, nullptr,
                                       nullptr, nullptr);
}

void tst_ToolBarWidgets::buildsButtonRow()
{
    QVERIFY(build(false));
    QVERIFY(m_group);
    auto *pMain = qobject_cast<QVBoxLayout *>(m_toolBar->layout());
    QVERIFY(pMain);
    QCOMPARE(pMain->count(), 1);
    QCOMPARE(pMain->sizeConstraint(), QLayout::SetFixedSize);

    const QStringList tips{QStringLiteral("New message"), QStringLiteral("Search")};
    for (int i = 0; i < m_items.size(); ++i) {
        QToolButton *pButton = m_items.at(i).button;
        QVERIFY(pButton);
        QCOMPARE(pButton->parentWidget(), m_toolBar.get());
        QCOMPARE(pButton->size(), QSize(50, 48));
        QVERIFY(pButton->autoRaise());
        QCOMPARE(pButton->objectName(), QStringLiteral("ToolBar"));
        QCOMPARE(m_group->id(pButton), m_items.at(i).id);
        QCOMPARE(pButton->toolTip(), tips.at(i));
        QCOMPARE(pButton->iconSize(), kIconSize);
    }
    QCOMPARE(activeEdges(m_items.at(0).button), qMakePair(kRed, kBlue));
    QCOMPARE(activeEdges(m_items.at(1).button), qMakePair(kYellow, kBlack));

    // Neighbouring buttons overlap by 6 pixels; the toolbar takes the row's size.
    m_toolBar->show();
    pMain->activate();
    QCOMPARE(m_items.at(1).button->x() - m_items.at(0).button->x(), 44);
    QCOMPARE(m_toolBar->height(), 48);
}

void tst_ToolBarWidgets::buildsSearchBox()
{
    QVERIFY(build(true));
    QVERIFY(m_searchLayout && m_searchEdit && m_searchIcon);
    // Created, but not shown until asked for.
    QCOMPARE(m_toolBar->layout()->count(), 1);
    QCOMPARE(m_searchLayout->parent(), nullptr);
    QCOMPARE(m_searchLayout->count(), 3);
    QCOMPARE(m_searchLayout->itemAt(0)->widget(), m_searchIcon);
    QCOMPARE(m_searchLayout->itemAt(1)->widget(), m_searchEdit);
    QVERIFY(m_searchLayout->itemAt(2)->spacerItem());
    QCOMPARE(m_searchLayout->spacing(), 1);
    QCOMPARE(m_searchLayout->contentsMargins(), QMargins(0, 0, 0, 3));
    QCOMPARE(m_searchEdit->size(), QSize(300, 19));
    QCOMPARE(m_searchEdit->maxLength(), 48);
    QVERIFY(!m_searchEdit->acceptDrops());
    QCOMPARE(edges(m_searchIcon->pixmap(Qt::ReturnByValue)), qMakePair(kYellow, kBlack));
}

void tst_ToolBarWidgets::searchBoxNeedsAllThreeOutArguments()
{
    SearchLineEdit untouched;
    SearchLineEdit *pEdit = &untouched;
    QHBoxLayout *pLayout = nullptr;
    QVERIFY(ToolBarLogic::CreateToolBar(kPlugin, m_toolBar.get(), m_items, &m_group, &pLayout,
                                        &pEdit, nullptr));
    QCOMPARE(pEdit, &untouched);
    QCOMPARE(pLayout, nullptr);
    QVERIFY(m_toolBar->layout());

    // Without a search item the box is built with an empty icon.
    QWidget other;
    QList<ToolItem> items{m_items.first()};
    QVERIFY(ToolBarLogic::CreateToolBar(kPlugin, &other, items, &m_group, &m_searchLayout,
                                        &m_searchEdit, &m_searchIcon));
    QVERIFY(m_searchIcon && m_searchIcon->pixmap(Qt::ReturnByValue).isNull());
}

void tst_ToolBarWidgets::enableDisableSwitchesIconAndState()
{
    QVERIFY(build(false));
    QToolButton *pButton = m_items.at(0).button;
    ToolBarLogic::EnableDisableItem(kPlugin, m_items, 7, false);
    QVERIFY(!pButton->isEnabled());
    QVERIFY(pButton->icon().availableSizes(QIcon::Active).isEmpty());
    QCOMPARE(edges(pButton->icon().pixmap(kIconSize, QIcon::Disabled)), qMakePair(kGreen, kGreen));
    QVERIFY(m_items.at(1).button->isEnabled());

    ToolBarLogic::EnableDisableItem(kPlugin, m_items, 7, true);
    QVERIFY(pButton->isEnabled());
    QVERIFY(pButton->icon().availableSizes(QIcon::Disabled).isEmpty());
    QCOMPARE(activeEdges(pButton), qMakePair(kRed, kBlue));
}

void tst_ToolBarWidgets::unknownIdChangesNothing()
{
    QVERIFY(build(false));
    const qint64 before = m_items.at(0).button->icon().cacheKey();
    ToolBarLogic::EnableDisableItem(kPlugin, m_items, 8, false);
    QVERIFY(m_items.at(0).button->isEnabled() && m_items.at(1).button->isEnabled());
    QCOMPARE(m_items.at(0).button->icon().cacheKey(), before);
    // Items without buttons (not built yet) are passed over.
    QList<ToolItem> unbuilt{m_items.first()};
    unbuilt.first().button = nullptr;
    ToolBarLogic::EnableDisableItem(kPlugin, unbuilt, 7, false);
    ToolBarLogic::ChangeToolBarIconDirection(kPlugin, unbuilt, true, nullptr);
}

void tst_ToolBarWidgets::mirroredIconsInRightToLeftLayout()
{
    QApplication::setLayoutDirection(Qt::RightToLeft);
    QVERIFY(build(true));
    QCOMPARE(activeEdges(m_items.at(0).button), qMakePair(kBlue, kRed));
    QCOMPARE(activeEdges(m_items.at(1).button), qMakePair(kBlack, kYellow));
    ToolBarLogic::EnableDisableItem(kPlugin, m_items, 7, false);
    QCOMPARE(edges(m_items.at(0).button->icon().pixmap(kIconSize, QIcon::Disabled)).second, kGreen);
    ToolBarLogic::EnableDisableItem(kPlugin, m_items, 9, false);
    QCOMPARE(edges(m_items.at(1).button->icon().pixmap(kIconSize, QIcon::Disabled)),
             qMakePair(kBlack, kGreen));
}

void tst_ToolBarWidgets::directionChangeShowsEnabledIcons()
{
    QVERIFY(build(true));
    ToolBarLogic::EnableDisableItem(kPlugin, m_items, 7, false);

    ToolBarLogic::ChangeToolBarIconDirection(kPlugin, m_items, true, &m_searchIcon);
    QCOMPARE(activeEdges(m_items.at(0).button), qMakePair(kBlue, kRed));
    QVERIFY(!m_items.at(0).button->isEnabled()); // still disabled, with its enabled icon
    QCOMPARE(edges(m_searchIcon->pixmap(Qt::ReturnByValue)), qMakePair(kBlack, kYellow));

    ToolBarLogic::ChangeToolBarIconDirection(kPlugin, m_items, false, &m_searchIcon);
    QCOMPARE(activeEdges(m_items.at(0).button), qMakePair(kRed, kBlue));
    QCOMPARE(edges(m_searchIcon->pixmap(Qt::ReturnByValue)), qMakePair(kYellow, kBlack));
}

void tst_ToolBarWidgets::showHideSearchBox()
{
    QVERIFY(build(true));
    m_toolBar->show();
    QLayout *pMain = m_toolBar->layout();
    pMain->activate();
    const int plainHeight = m_toolBar->height();

    m_searchEdit->setText(QStringLiteral("old"));
    ToolBarLogic::ShowHideSearchBox(m_toolBar.get(), m_searchLayout, m_searchEdit, true);
    pMain->activate();
    QCOMPARE(pMain->count(), 2);
    QVERIFY(m_searchEdit->isEnabled());
    QVERIFY(m_searchEdit->isVisible() && m_searchIcon->isVisible());
    QVERIFY(m_searchEdit->text().isEmpty());
    QCOMPARE(m_searchEdit->parentWidget(), m_toolBar.get());
    QVERIFY(m_toolBar->height() > plainHeight);

    ToolBarLogic::ShowHideSearchBox(m_toolBar.get(), m_searchLayout, m_searchEdit, false);
    pMain->activate();
    QCOMPARE(pMain->count(), 1);
    QVERIFY(!m_searchEdit->isEnabled());
    QVERIFY(!m_searchEdit->isVisible() && !m_searchIcon->isVisible());
    QCOMPARE(m_searchLayout->parent(), nullptr);
    QCOMPARE(m_toolBar->height(), plainHeight);

    // Hiding twice and showing twice keep one search row.
    ToolBarLogic::ShowHideSearchBox(m_toolBar.get(), m_searchLayout, m_searchEdit, false);
    ToolBarLogic::ShowHideSearchBox(m_toolBar.get(), m_searchLayout, m_searchEdit, true);
    ToolBarLogic::ShowHideSearchBox(m_toolBar.get(), m_searchLayout, m_searchEdit, true);
    QCOMPARE(pMain->count(), 2);
    QVERIFY(m_searchEdit->isVisible());
}

void tst_ToolBarWidgets::showHideWithoutLayoutDoesNothing()
{
    QVERIFY(
        ToolBarLogic::createSearchBox(&m_searchLayout, &m_searchEdit, QString(), &m_searchIcon));
    m_searchEdit->setText(QStringLiteral("kept"));
    ToolBarLogic::ShowHideSearchBox(m_toolBar.get(), m_searchLayout, m_searchEdit, true);
    ToolBarLogic::ShowHideSearchBox(nullptr, m_searchLayout, m_searchEdit, true);
    QCOMPARE(m_searchEdit->text(), QStringLiteral("kept"));
    QCOMPARE(m_searchLayout->parent(), nullptr);
    QVERIFY(build(false));
    ToolBarLogic::ShowHideSearchBox(m_toolBar.get(), nullptr, m_searchEdit, true);
    ToolBarLogic::ShowHideSearchBox(m_toolBar.get(), m_searchLayout, nullptr, true);
    QCOMPARE(m_toolBar->layout()->count(), 1);
}

void tst_ToolBarWidgets::destroyRemovesButtonsAndGroup()
{
    QVERIFY(build(false));
    QPointer<QToolButton> first = m_items.at(0).button;
    QPointer<QButtonGroup> group = m_group;
    ToolBarLogic::DestroyToolButtonGroup(m_items, &m_group);
    QVERIFY(first.isNull());
    QVERIFY(group.isNull());
    QCOMPARE(m_group, nullptr);
    for (const ToolItem &item : qAsConst(m_items))
        QCOMPARE(item.button, nullptr);
    QVERIFY(m_toolBar->findChildren<QToolButton *>().isEmpty());
}

void tst_ToolBarWidgets::objectName()
{
    LogCapture log;
    QCOMPARE(ToolBarLogic::GetObjectName(QStringLiteral("XFramePlugin")),
             QStringLiteral("ToolBar_XFramePlugin"));
    const QStringList lines = log.texts();
    QVERIFY(LogCapture::hasStamp(lines.value(0)) && LogCapture::hasStamp(lines.value(1)));
    QCOMPARE(
        log.unstamped(),
        (QStringList{kSource + QStringLiteral(": GetObjectName Enter: plugin name:XFramePlugin"),
                     kSource +
                         QStringLiteral(": GetObjectName Exit: objectname:ToolBar_XFramePlugin")}));
}

QTEST_MAIN(tst_ToolBarWidgets)
#include "tst_toolbarwidgets.moc"
