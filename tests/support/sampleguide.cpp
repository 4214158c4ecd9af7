#include "sampleguide.h"

#include "clientcache.h"
#include "sampleobjects.h"
#include "samplerecords.h"

namespace guide {

using namespace support;

void fill()
{
    replaceGuide({guideShift(Day, "Д", "Дневная", "11,12"), guideShift(Night, "Н", "Ночная", "13"),
                  guideShift(Short, {}, "Неполная", "14")},
                 {guideInterval(11, 8 * Hour, 12 * Hour), guideInterval(12, 13 * Hour, 17 * Hour),
                  guideInterval(13, 20 * Hour, 8 * Hour), guideInterval(14, 9 * Hour, 17 * Hour - Minute)});
}

} // namespace guide
