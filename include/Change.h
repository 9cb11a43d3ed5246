#ifndef LINKDECK_CHANGE_H
#define LINKDECK_CHANGE_H

#include "CoreGlobal.h"

#include <QMutex>
#include <QString>

class QApplication;
class QIODevice;

// Guards the current language and the translation table.
CORE_EXPORT extern QMutex g_mutex;

// The user-interface language of the application, the translated texts of every plugin and the
// skin style sheet. Texts are looked up by plugin name and text identifier; a plugin's language
// file is read on the first lookup of one of its texts.
class CORE_EXPORT Change
{
public:
    // Reads the stored language (its first character is a prefix), makes it current, returns it.
    static QString GetSettingDefaultLang();
    static void SetSettingDefaultLang(QString lang);
    // Switches the language, reloads every plugin file already loaded and stores the choice.
    static void SetLangName(const QString &name);
    static QString GetLangName();

    static bool LoadLangFile(QString plugin);
    static bool readXmlFile(QIODevice *device, QString plugin);
    // The text of identifier id in plugin's language file; empty when the file has none.
    static QString tr(QString id, QString plugin);

    // Installs the application style and applies the style sheet file.
    static bool ChangSkin(QApplication *app, const QString &styleSheetFile);
    static QString GetSettingDefaultSkin();
    static void SetSettingDefaultSkin(QString skin);
};

#endif // LINKDECK_CHANGE_H
