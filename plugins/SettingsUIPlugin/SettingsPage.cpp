#include "SettingsPage.h"

#include "Change.h"
#include "CommonUtils.h"
#include "LDK_Tool.h"

#include <QGridLayout>

namespace {

const QString kPlugin = QStringLiteral("SettingsUIPlugin");
const QString kGroup = QStringLiteral("settings");
const QString kAutoConnect = QStringLiteral("autoconnect");
// The languages the sample plugins ship files for: code and the language's own name.
const char *const kLanguages[][2] = {{"en-us", "English"}, {"de-de", "Deutsch"}};

QString text(const char *id)
{
    return Change::tr(QLatin1String(id), kPlugin);
}

CheckBoxClick *createAutoConnect(QWidget *pPage)
{
    auto *pCheck = new CheckBoxClick(text("IDS_SETTINGS_AUTOCONNECT"), pPage);
    pCheck->setObjectName(QStringLiteral("Settings_AutoConnect"));
    pCheck->setChecked(CommonUtils::GetSettings(kGroup, kAutoConnect) == QLatin1String("true"));
    QObject::connect(pCheck, &QCheckBox::toggled, pCheck, [](bool bChecked) {
        CommonUtils::SetSettings(kGroup, kAutoConnect, QLatin1String(bChecked ? "true" : "false"));
    });
    return pCheck;
}

ComboBox *createLanguageChoice(QWidget *pPage)
{
    auto *pCombo = new ComboBox(pPage);
    pCombo->setObjectName(QStringLiteral("Settings_Language"));
    for (const auto &language : kLanguages)
        pCombo->addItem(QString::fromUtf8(language[1]), QLatin1String(language[0]));
    pCombo->setCurrentIndex(qMax(0, pCombo->findData(Change::GetLangName())));
    QObject::connect(
        pCombo, QOverload<int>::of(&QComboBox::activated), pCombo,
        [pCombo](int index) { Change::SetLangName(pCombo->itemData(index).toString()); });
    return pCombo;
}

} // namespace

namespace SettingsPage {

QWidget *create()
{
    auto *pPage = new QWidget;
    pPage->setObjectName(QStringLiteral("Settings_Page"));
    auto *pLayout = new QGridLayout(pPage);
    pLayout->addWidget(createAutoConnect(pPage), 0, 0, 1, 2);

    auto *pLanguageLabel = new MouseClickedWidget(text("IDS_SETTINGS_LANGUAGE"), pPage);
    pLanguageLabel->setObjectName(QStringLiteral("Settings_LanguageLabel"));
    pLanguageLabel->SetMouseEnable(true);
    ComboBox *pLanguage = createLanguageChoice(pPage);
    QObject::connect(pLanguageLabel, &MouseClickedWidget::onClicked, pLanguage,
                     &ComboBox::onMousePressed);
    pLayout->addWidget(pLanguageLabel, 1, 0);
    pLayout->addWidget(pLanguage, 1, 1);

    auto *pNote = new QLabel(text("IDS_SETTINGS_NEXT_START"), pPage);
    pNote->setObjectName(QStringLiteral("Settings_Note"));
    pNote->setWordWrap(true);
    pLayout->addWidget(pNote, 2, 0, 1, 2);
    pLayout->setRowStretch(3, 1);
    pLayout->setColumnStretch(1, 1);
    return pPage;
}

} // namespace SettingsPage
