#include "CallDialog.h"

#include "Change.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

const QString kPlugin = QStringLiteral("CallUIPlugin");
constexpr QSize kSize(280, 170);

QString text(const char *id)
{
    return Change::tr(QLatin1String(id), kPlugin);
}

} // namespace

CallDialog::CallDialog(QWidget *pParent)
    : ExtendDialog(pParent, Qt::Dialog | Qt::WindowCloseButtonHint,
                   ExtendDialog::WIDGET_TYPE_RESIZE_MAIN, false)
{
    setObjectName(QStringLiteral("CallUIPlugin_CallDialog"));
    auto *pContent = new QWidget;
    pContent->setObjectName(QStringLiteral("CallUIPlugin_Content"));
    auto *pLayout = new QVBoxLayout(pContent);
    auto *pCalling = new QLabel(text("IDS_CALL_CALLING"), pContent);
    pCalling->setObjectName(QStringLiteral("CallUIPlugin_CallingLabel"));
    m_pNumber = new QLabel(pContent);
    m_pNumber->setObjectName(QStringLiteral("CallUIPlugin_NumberLabel"));
    m_pNumber->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *pHangUp = new QPushButton(text("IDS_CALL_HANG_UP"), pContent);
    pHangUp->setObjectName(QStringLiteral("CallUIPlugin_HangUpButton"));
    connect(pHangUp, &QPushButton::clicked, this, &QDialog::close);
    pLayout->addWidget(pCalling, 0, Qt::AlignHCenter);
    pLayout->addWidget(m_pNumber, 1, Qt::AlignCenter);
    pLayout->addWidget(pHangUp, 0, Qt::AlignHCenter);
    AddMainWidget(pContent);
    setWindowTitle(text("IDS_CALL_TITLE"));
    resize(kSize);
}

void CallDialog::showCall(const QString &number)
{
    m_pNumber->setText(number.isEmpty() ? text("IDS_CALL_NO_NUMBER") : number);
    show();
    raise();
}
