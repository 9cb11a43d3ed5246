#include "ToolBarLogic.h"
#include "ToolBarShared.h"

#include "Change.h"
#include "common/CoreLogging.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QSpacerItem>
#include <QToolButton>

#include <memory>

// Building and tearing down the row of tool buttons.
namespace {
using ToolBarShared::kSource;

constexpr int kButtonWidth = 50;
constexpr int kButtonHeight = 48;
// Neighbouring buttons overlap so that their raised frames share one edge.
constexpr int kButtonOverlap = -6;

QToolButton *createButton(QWidget *pToolBar)
{
    auto *pButton = new QToolButton(pToolBar);
    pButton->setFixedSize(kButtonWidth, kButtonHeight);
    pButton->setAutoRaise(true);
    pButton->setObjectName(QStringLiteral("ToolBar"));
    return pButton;
}
} // namespace

bool ToolBarLogic::CreateToolBar(QString strPluginName, QWidget *pToolBar,
                                 QList<ToolItem> &lstItems, QButtonGroup **ppButtonGroup,
                                 QHBoxLayout **ppSearchLayout, SearchLineEdit **ppSearchEdit,
                                 QLabel **ppSearchIcon)
{
    if (!pToolBar || !ppButtonGroup)
        return false;
    // Owned here until installed on the toolbar widget.
    auto pMainLayout = std::make_unique<QVBoxLayout>();
    auto *pRow = new QHBoxLayout;
    auto *pSpacer = new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum);
    *ppButtonGroup = new QButtonGroup(pToolBar);

    pMainLayout->setSpacing(0);
    pMainLayout->setContentsMargins(0, 0, 0, 0);
    pMainLayout->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    pMainLayout->setSizeConstraint(QLayout::SetFixedSize);
    pRow->setSpacing(0);
    pRow->setContentsMargins(0, 0, 0, 0);

    QString strSearchIcon;
    for (ToolItem &item : lstItems) {
        QToolButton *pButton = createButton(pToolBar);
        (*ppButtonGroup)->addButton(pButton, item.id);
        const QString strIcon = ToolBarShared::pluginFilePath(strPluginName, item.enabled);
        setIcon(pButton, true, strIcon);
        if (item.search)
            strSearchIcon = strIcon;
        pButton->setToolTip(Change::tr(item.resource, strPluginName));
        pRow->addWidget(pButton, 0, Qt::Alignment());
        pRow->addSpacing(kButtonOverlap);
        item.button = pButton;
    }
    pRow->addSpacerItem(pSpacer);
    pMainLayout->addLayout(pRow);

    if (ppSearchLayout && ppSearchEdit && ppSearchIcon) {
        *ppSearchLayout = nullptr;
        *ppSearchEdit = nullptr;
        if (!createSearchBox(ppSearchLayout, ppSearchEdit, strSearchIcon, ppSearchIcon))
            return false;
    }
    pToolBar->setLayout(pMainLayout.release());
    return true;
}

void ToolBarLogic::DestroyToolButtonGroup(QList<ToolItem> &lstItems, QButtonGroup **ppButtonGroup)
{
    QButtonGroup *pGroup = ppButtonGroup ? *ppButtonGroup : nullptr;
    for (ToolItem &item : lstItems) {
        if (!item.button)
            continue;
        if (pGroup)
            pGroup->removeButton(item.button);
        delete item.button;
        item.button = nullptr;
    }
    if (!ppButtonGroup)
        return;
    delete *ppButtonGroup;
    *ppButtonGroup = nullptr;
}

QString ToolBarLogic::GetObjectName(QString strPluginName)
{
    qCDebug(lcToolBar, "%s Enter: plugin name:%s",
            LogLine::stampedPrefix(kSource, "GetObjectName").constData(),
            LogLine::arg(strPluginName).constData());
    const QString strObjectName = QStringLiteral("ToolBar_") + strPluginName;
    qCDebug(lcToolBar, "%s Exit: objectname:%s",
            LogLine::stampedPrefix(kSource, "GetObjectName").constData(),
            LogLine::arg(strObjectName).constData());
    return strObjectName;
}
