#include "MenuParse.h"
#include "MenuShared.h"
#include "common/CoreLogging.h"

#include <QXmlStreamReader>

// The operator's customization section of a menu file: entries added to or removed from the
// menus read before it.
namespace MENU {

QString MenuParse::s_strCustomizeMenu;
QString MenuParse::s_strCustomizeParent;

using MenuShared::attribute;

bool MenuParse::CustomizeOperator(QXmlStreamReader &reader)
{
    // An empty operator name matches the first token without a "name" attribute, normally the
    // "customize" start tag itself.
    for (; !reader.atEnd(); reader.readNext()) {
        if (attribute(reader, "name") == m_strOperator)
            return true;
    }
    return false;
}

bool MenuParse::CustomizeItemParse(QXmlStreamReader &reader)
{
    qCDebug(lcMenus, "%s:ReadMenuItem ",
            LogLine::prefix(MenuShared::kSource, "CustomizeItemParse").constData());
    // Runs to the end of the whole section, so blocks of operators listed after the matched one
    // are applied too; shipped files keep their operator block last.
    for (; !reader.atEnd(); reader.readNext()) {
        const QStringRef name = reader.name();
        if (reader.isEndElement() && name == QLatin1String("customize"))
            break;
        if (name == QLatin1String("menu")) {
            s_strCustomizeParent = attribute(reader, "parent");
            s_strCustomizeMenu = attribute(reader, "name");
            continue;
        }
        if (name != QLatin1String("item"))
            continue;
        const QString strType = attribute(reader, "type");
        const QString strAction = attribute(reader, "action");
        const bool bAdd = strAction == QLatin1String("add");
        const bool bRemove = strAction == QLatin1String("rem");
        if (strType == QLatin1String("POPUP")) {
            if (bAdd)
                readIdAndText(reader, AddMenuPopup(s_strCustomizeMenu));
            else if (bRemove)
                DeleteMenuPopup(s_strCustomizeMenu, attribute(reader, "id"));
        } else if (strType == QLatin1String("ITEM")) {
            if (bAdd)
                readIdAndText(reader, AddMenuItem(s_strCustomizeMenu, s_strCustomizeParent));
            else if (bRemove)
                DeleteMenuItem(s_strCustomizeMenu, s_strCustomizeParent, attribute(reader, "id"));
        } else if (strType == QLatin1String("SEPERATOR")) {
            // Separators are only ever added, whatever the action says.
            AddMenuSeparator(s_strCustomizeMenu, s_strCustomizeParent);
        }
    }
    s_strCustomizeMenu.clear();
    s_strCustomizeParent.clear();
    return true;
}

} // namespace MENU
