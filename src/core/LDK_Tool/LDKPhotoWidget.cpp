#include "LDK_Tool.h"

#include "Change.h"
#include "CommonUtils.h"
#include "LdkToolLog.h"

#include <QFile>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>

#include <new>

namespace {

const QString kPlugin = QStringLiteral("AddrBookUIPlugin");
const QRect kPictureRect(6, 12, 90, 118);
const QPoint kDeleteButtonPos(78, 130); // over the picture's lower right corner
const QSize kDeleteButtonSize(18, 16);
// The lines these checks have always been reported at.
enum { kLineNoLabel = 251, kLineNoPixmap = 252, kLineNoMemory = 287, kLineNoLabelMouse = 196 };

// Folder-like and missing paths name no picture.
bool namesPicture(const QString &path)
{
    return !path.endsWith(QLatin1Char('\\')) && !path.endsWith(QLatin1Char('/')) &&
           QFile::exists(path);
}

} // namespace

LDKPhotoWidget::LDKPhotoWidget(QWidget *pParent)
    : QWidget(pParent)
    , m_pBtnDelete(new QPushButton)
    , m_pLabel(new QLabel)
    , m_strDefaultPath(CommonUtils::GetPluginLibraryPath() +
                       QStringLiteral("/plugins/AddrBookUIPlugin/DefaultPhoto.png"))
{
    m_pLabel->setParent(this);
    m_pLabel->setGeometry(kPictureRect);
    m_pBtnDelete->setParent(this);
    m_pBtnDelete->setObjectName(QStringLiteral("AddrBook_btnDeletePhoto"));
    m_pBtnDelete->setFixedSize(kDeleteButtonSize);
    m_pBtnDelete->setFocusPolicy(Qt::NoFocus);
    m_pBtnDelete->setCursor(Qt::PointingHandCursor);
    m_pBtnDelete->move(kDeleteButtonPos);

    m_pPixmap = new QPixmap(m_strDefaultPath);
    m_pLabel->setPixmap(*m_pPixmap);
    m_pLabel->hide();
    m_pBtnDelete->hide();
    setContentsMargins(0, 0, 0, 0);
    connect(m_pBtnDelete, &QPushButton::clicked, this, &LDKPhotoWidget::onDeleteClicked);
    m_strPhotoPath = m_strDefaultPath;
}

LDKPhotoWidget::~LDKPhotoWidget()
{
    delete m_pPixmap;
}

void LDKPhotoWidget::SetPixmap(QString strPixPath)
{
    if (!m_pLabel) {
        LdkToolLog::argIsNull("SetPixmap", kLineNoLabel);
        return;
    }
    if (!m_pPixmap) {
        LdkToolLog::argIsNull("SetPixmap", kLineNoPixmap);
        return;
    }
    if (!strPixPath.isEmpty() && !namesPicture(strPixPath))
        return;
    m_strPhotoPath = strPixPath.isEmpty() ? m_strDefaultPath : strPixPath;
    emit photoChange();
    m_pBtnDelete->setVisible(m_strPhotoPath != m_strDefaultPath);

    delete m_pPixmap;
    m_pPixmap = new (std::nothrow) QPixmap(m_strPhotoPath);
    if (!m_pPixmap) {
        LdkToolLog::argIsNull("SetPixmap", kLineNoMemory);
        return;
    }
    m_pLabel->clear();
    m_pLabel->setPixmap(*m_pPixmap);
    m_pLabel->setToolTip(Change::tr(QStringLiteral("IDS_TIPS_ADD_IMAGE"), kPlugin));
}

void LDKPhotoWidget::SetToDefalut()
{
    SetPixmap(m_strDefaultPath);
}

void LDKPhotoWidget::onDeleteClicked()
{
    const int answer = CommonUtils::ShowMessageForPhotoEdit(
        QMessageBox::Information, nullptr, QString(),
        Change::tr(QStringLiteral("IDS_DELETE_PICTURE"), kPlugin), QStringLiteral("IDS_YES"),
        QStringLiteral("IDS_NO"), QString(), false, Qt::WindowCloseButtonHint, nullptr, QString(),
        true);
    if (answer != QMessageBox::Ok)
        return;
    SetPixmap(m_strDefaultPath);
    emit photoReset(m_strDefaultPath);
}

void LDKPhotoWidget::mouseReleaseEvent(QMouseEvent *pEvent)
{
    if (!m_bMouseEnable) {
        QWidget::mouseReleaseEvent(pEvent);
        return;
    }
    emit onClicked();
}

void LDKPhotoWidget::SetMouseEnable(bool bEnable)
{
    m_bMouseEnable = bEnable;
    if (!m_pLabel) {
        LdkToolLog::note("SetMouseEnable", kLineNoLabelMouse, "init checkbox filed ...  ");
        return;
    }
    m_pLabel->setCursor(bEnable ? Qt::PointingHandCursor : Qt::ArrowCursor);
    m_pLabel->setVisible(bEnable);
    m_pBtnDelete->setVisible(bEnable);
}
