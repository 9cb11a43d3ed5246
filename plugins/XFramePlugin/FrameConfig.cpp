#include "FrameConfig.h"

#include <QFile>
#include <QXmlStreamReader>

namespace {

int intAttribute(const QXmlStreamAttributes &attributes, const char *name, int fallback)
{
    bool ok = false;
    const int value = attributes.value(QLatin1String(name)).toInt(&ok);
    return ok ? value : fallback;
}

} // namespace

FrameConfig FrameConfig::load(const QString &fileName)
{
    FrameConfig config;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("XFramePlugin: cannot read %s, using the default frame", qPrintable(fileName));
        return config;
    }
    QXmlStreamReader reader(&file);
    bool inFunction = false;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isEndElement() && reader.name() == QLatin1String("function"))
            break;
        if (!reader.isStartElement())
            continue;
        const QXmlStreamAttributes attributes = reader.attributes();
        if (reader.name() == QLatin1String("function")) {
            inFunction = true;
        } else if (inFunction && reader.name() == QLatin1String("titlebar")) {
            config.customTitleBar =
                attributes.value(QLatin1String("custom")) == QLatin1String("true");
            config.titleHeight = intAttribute(attributes, "height", config.titleHeight);
            config.frameWidth = intAttribute(attributes, "framewidth", config.frameWidth);
        } else if (inFunction && reader.name() == QLatin1String("layout")) {
            config.layoutClsid = attributes.value(QLatin1String("clsid")).toString();
        }
    }
    if (reader.hasError())
        qWarning("XFramePlugin: %s in %s at line %lld", qPrintable(reader.errorString()),
                 qPrintable(fileName), reader.lineNumber());
    return config;
}
