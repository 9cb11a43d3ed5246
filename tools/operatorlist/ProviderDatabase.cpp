#include "ProviderDatabase.h"

#include <QXmlStreamReader>

namespace {

const QLatin1String kXmlNamespace("http://www.w3.org/XML/1998/namespace");

bool isTranslation(const QXmlStreamReader &reader)
{
    return !reader.attributes().value(kXmlNamespace, QLatin1String("lang")).isEmpty();
}

// Keeps the untranslated name; a translated one serves only while nothing better was seen.
void takeName(QXmlStreamReader &reader, QString &name, bool &nameIsUntranslated)
{
    const bool translated = isTranslation(reader);
    const QString text = reader.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
    if (nameIsUntranslated || (translated && !name.isEmpty()))
        return;
    name = text;
    nameIsUntranslated = !translated;
}

class Reader
{
public:
    Reader(QIODevice *device, ProviderDatabase &database)
        : m_xml(device)
        , m_database(database)
    {}

    bool read(QString &errorText)
    {
        while (!m_xml.atEnd()) {
            m_xml.readNext();
            if (m_xml.isStartElement())
                startElement();
            else if (m_xml.isEndElement())
                endElement();
        }
        if (m_xml.hasError()) {
            errorText = QStringLiteral("%1 at line %2, column %3")
                            .arg(m_xml.errorString())
                            .arg(m_xml.lineNumber())
                            .arg(m_xml.columnNumber());
            return false;
        }
        return true;
    }

private:
    void startElement()
    {
        const QStringRef name = m_xml.name();
        if (name == QLatin1String("country")) {
            m_database.countries.append(
                {m_xml.attributes().value(QLatin1String("code")).toString(), QString()});
            m_countryNameUntranslated = false;
        } else if (name == QLatin1String("provider") && !m_database.countries.isEmpty()) {
            Provider provider;
            provider.primary =
                m_xml.attributes().value(QLatin1String("primary")) == QLatin1String("true");
            provider.country = m_database.countries.size() - 1;
            m_database.providers.append(provider);
            m_inProvider = true;
            m_providerNameUntranslated = false;
        } else if (name == QLatin1String("name") && m_parent == Parent::Country) {
            takeName(m_xml, m_database.countries.last().name, m_countryNameUntranslated);
            return;
        } else if (name == QLatin1String("name") && m_parent == Parent::Provider) {
            takeName(m_xml, m_database.providers.last().name, m_providerNameUntranslated);
            return;
        } else if (name == QLatin1String("network-id") && m_inProvider) {
            addNetwork();
        }
        m_parents.append(parentKind(name));
        m_parent = m_parents.last();
    }

    // A network id without both codes names no network.
    void addNetwork()
    {
        const NetworkId id{m_xml.attributes().value(QLatin1String("mcc")).toString(),
                           m_xml.attributes().value(QLatin1String("mnc")).toString()};
        if (!id.mcc.isEmpty() && !id.mnc.isEmpty())
            m_database.providers.last().networks.append(id);
    }

    void endElement()
    {
        if (m_xml.name() == QLatin1String("provider"))
            m_inProvider = false;
        if (!m_parents.isEmpty())
            m_parents.removeLast();
        m_parent = m_parents.isEmpty() ? Parent::Other : m_parents.last();
    }

    // Only the names directly below a country or a provider are theirs (an apn has names too).
    enum class Parent { Country, Provider, Other };
    static Parent parentKind(const QStringRef &name)
    {
        if (name == QLatin1String("country"))
            return Parent::Country;
        if (name == QLatin1String("provider"))
            return Parent::Provider;
        return Parent::Other;
    }

    QXmlStreamReader m_xml;
    ProviderDatabase &m_database;
    QVector<Parent> m_parents;
    Parent m_parent = Parent::Other;
    bool m_inProvider = false;
    bool m_countryNameUntranslated = false;
    bool m_providerNameUntranslated = false;
};

} // namespace

bool readProviderDatabase(QIODevice *device, ProviderDatabase &database, QString &errorText)
{
    return Reader(device, database).read(errorText);
}
