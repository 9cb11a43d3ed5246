#include "LastUsedDevice.h"

#include "CommonUtils.h"
#include "NexoSdk.h"

#include <QByteArray>

#include <cstring>

namespace LastUsedDevice {
namespace {

const QString kGroup = QStringLiteral("devicemgr");
const QString kKey = QStringLiteral("lastused");

} // namespace

QString load()
{
    return CommonUtils::GetSettings(kGroup, kKey);
}

void store(const QString &device)
{
    CommonUtils::SetSettings(kGroup, kKey, device);
}

QString singleAvailableDevice()
{
    QByteArray block(NEXO_DEVICE_LIST_SIZE, '\0');
    if (NEXO_DevSrv_GetAvailableDeviceList(block.data()) != 0)
        return QString();
    qint32 count = 0;
    std::memcpy(&count, block.constData() + NEXO_DEVICE_LIST_COUNT_OFFSET, sizeof count);
    if (count != 1)
        return QString();
    return QString::fromLocal8Bit(block.constData() + NEXO_DEVICE_LIST_NAMES_OFFSET);
}

} // namespace LastUsedDevice
