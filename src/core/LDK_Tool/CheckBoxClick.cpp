#include "LDK_Tool.h"

#include "LdkToolLog.h"

#include <QMouseEvent>
#include <QVBoxLayout>

namespace {
// Room left of the text for the box itself.
constexpr int kIndicatorSpace = 20;
} // namespace

CheckBoxClick::CheckBoxClick(QWidget *pParent)
    : QCheckBox(pParent)
    , m_pLabel(new MouseClickedWidget(this))
    , m_pLayout(new QVBoxLayout)
{
    Init();
}

CheckBoxClick::CheckBoxClick(QString strText, QWidget *pParent)
    : QCheckBox(pParent)
    , m_pLabel(new MouseClickedWidget(strText, this))
    , m_pLayout(new QVBoxLayout)
{
    Init();
}

void CheckBoxClick::Init()
{
    if (!m_pLabel || !m_pLayout) {
        LdkToolLog::note("Init", __LINE__, "init checkbox filed ...  ");
        return;
    }
    setLayout(m_pLayout);
    m_pLayout->addWidget(m_pLabel, 0, Qt::AlignVCenter);
    m_pLayout->setContentsMargins(kIndicatorSpace, 0, 0, 0);
    const QSize label = m_pLabel->sizeHint();
    resize(kIndicatorSpace + label.width(), qMax(label.height(), QCheckBox::sizeHint().height()));
    m_pLabel->SetMouseEnable(true);
    connect(m_pLabel, &MouseClickedWidget::onClicked, this, &CheckBoxClick::mouseReleaseEvent);
}

void CheckBoxClick::setText(QString const &strText)
{
    if (!m_pLabel) {
        LdkToolLog::note("setText", __LINE__, "checkbox is not exist efiled ...  ");
        return;
    }
    m_pLabel->setText(strText);
}

// Replaces the button's own release handling, which would toggle a second time.
void CheckBoxClick::mouseReleaseEvent(QMouseEvent *pEvent)
{
    setDown(false);
    setChecked(!isChecked());
    emit onClicked(pEvent);
}
