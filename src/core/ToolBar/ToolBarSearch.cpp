#include "ToolBarLogic.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QSpacerItem>

// The toolbar's search box: an icon label and a SearchLineEdit in a row that is added to the
// toolbar's layout when shown and taken out again when hidden.
namespace {
constexpr int kSearchWidth = 300;
constexpr int kSearchHeight = 19;
constexpr int kSearchMaxLength = 48;
} // namespace

bool ToolBarLogic::createSearchBox(QHBoxLayout **ppSearchLayout, SearchLineEdit **ppSearchEdit,
                                   QString strIconPath, QLabel **ppSearchIcon)
{
    if (!ppSearchLayout || !ppSearchEdit || !ppSearchIcon)
        return false;
    auto *pLayout = new QHBoxLayout;
    auto *pEdit = new SearchLineEdit;
    auto *pIcon = new QLabel;
    auto *pSpacer = new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum);

    pLayout->setSpacing(1);
    pLayout->setContentsMargins(0, 0, 0, 3);
    pIcon->setPixmap(QPixmap(strIconPath));
    pEdit->setAcceptDrops(false);
    pEdit->clear();
    pEdit->setFocus();
    pEdit->setFixedSize(kSearchWidth, kSearchHeight);
    pEdit->setMaxLength(kSearchMaxLength);

    pLayout->addWidget(pIcon);
    pLayout->addWidget(pEdit);
    pLayout->addSpacerItem(pSpacer);
    *ppSearchLayout = pLayout;
    *ppSearchEdit = pEdit;
    *ppSearchIcon = pIcon;
    return true;
}

void ToolBarLogic::ShowHideSearchBox(QWidget *pToolBar, QHBoxLayout *pSearchLayout,
                                     SearchLineEdit *pSearchEdit, bool bShow)
{
    if (!pToolBar || !pSearchLayout || !pSearchEdit)
        return;
    auto *pToolBarLayout = qobject_cast<QBoxLayout *>(pToolBar->layout());
    if (!pToolBarLayout)
        return;
    const bool bShown = pSearchLayout->parent() == pToolBarLayout;
    pSearchEdit->setEnabled(bShow);
    if (bShow) {
        if (!bShown)
            pToolBarLayout->addLayout(pSearchLayout);
        pSearchEdit->clear();
        pSearchEdit->setFocus();
    } else if (bShown) {
        pToolBarLayout->removeItem(pSearchLayout);
        // Handed back to the caller, so that the next showing can adopt it again.
        pSearchLayout->setParent(nullptr);
    }
}
