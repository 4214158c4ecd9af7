#include "sampleguide.h"

#include "clientcache.h"
#include "sampleobjects.h"
#include "samplerecords.h"

namespace guide {

using namespace support;

void fill()
{
    replaceGuide({guideShift(Day, QStringLiteral("Д"), QStringLiteral("Дневная"), QStringLiteral("11,12")),
                  guideShift(Night, QStringLiteral("Н"), QStringLiteral("Ночная"), QStringLiteral("13")),
                  guideShift(Short, {}, QStringLiteral("Неполная"), QStringLiteral("14"))},
                 {guideInterval(11, 8 * Hour, 12 * Hour), guideInterval(12, 13 * Hour, 17 * Hour),
                  guideInterval(13, 20 * Hour, 8 * Hour), guideInterval(14, 9 * Hour, 17 * Hour - Minute)});
}

} // namespace guide
