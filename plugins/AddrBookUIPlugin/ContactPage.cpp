#include "ContactPage.h"

#include "Change.h"
#include "CommonUtils.h"
#include "LDK_Tool.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>

namespace {

const QString kPlugin = QStringLiteral("AddrBookUIPlugin");
const QString kGroup = QStringLiteral("addrbook");
const QString kPhotoKey = QStringLiteral("photo");
// The photo widget's picture and delete button with their margins.
constexpr QSize kPhotoSize(102, 150);

QString text(const char *id)
{
    return Change::tr(QLatin1String(id), kPlugin);
}

LDKPhotoWidget *createPhoto(QWidget *pPage)
{
    auto *pPhoto = new LDKPhotoWidget(pPage);
    pPhoto->setObjectName(QStringLiteral("AddrBook_Photo"));
    pPhoto->setFixedSize(kPhotoSize);
    // Enabling shows the delete button; the picture set next hides it again for the default
    // one. An empty or vanished stored path leaves the default picture.
    pPhoto->SetMouseEnable(true);
    pPhoto->SetPixmap(CommonUtils::GetSettings(kGroup, kPhotoKey));
    QObject::connect(pPhoto, &LDKPhotoWidget::onClicked, pPhoto, [pPhoto] {
        const QString file = QFileDialog::getOpenFileName(pPhoto, text("IDS_CHOOSE_PHOTO"),
                                                          QString(), text("IDS_IMAGE_FILES"));
        if (!file.isEmpty())
            pPhoto->SetPixmap(file);
    });
    QObject::connect(pPhoto, &LDKPhotoWidget::photoChange, pPhoto, [pPhoto] {
        CommonUtils::SetSettings(kGroup, kPhotoKey, pPhoto->GetPhotoPath());
    });
    return pPhoto;
}

} // namespace

namespace ContactPage {

QWidget *create()
{
    auto *pPage = new QWidget;
    pPage->setObjectName(QStringLiteral("AddrBook_ContactPage"));
    auto *pLayout = new QHBoxLayout(pPage);
    pLayout->addWidget(createPhoto(pPage), 0, Qt::AlignTop);

    auto *pDetails = new QVBoxLayout;
    auto *pName = new QLabel(text("IDS_CONTACT_NAME"), pPage);
    pName->setObjectName(QStringLiteral("AddrBook_ContactName"));
    auto *pHint = new QLabel(text("IDS_PHOTO_HINT"), pPage);
    pHint->setObjectName(QStringLiteral("AddrBook_PhotoHint"));
    pHint->setWordWrap(true);
    pDetails->addWidget(pName);
    pDetails->addWidget(pHint);
    pDetails->addStretch(1);
    pLayout->addLayout(pDetails, 1);
    return pPage;
}

} // namespace ContactPage
