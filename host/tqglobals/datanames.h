#pragma once

#include <QLatin1String>

namespace orvex {

// The kinds of objects that the local storage caches, by the name under which they are looked up.
constexpr QLatin1String SUBJECT_DATANAME("subject");
constexpr QLatin1String ORGSTRUCTURE_DATANAME("orgstructure");
constexpr QLatin1String SCHEDULE_SHIFT_DATANAME("schedule_shift");
constexpr QLatin1String SHIFT_INTERVAL_DATANAME("shift_interval");

/// What a menu entry carries that opens the shift guide.
constexpr QLatin1String SCHEDULE_SHIFT_GUIDES = SCHEDULE_SHIFT_DATANAME;

} // namespace orvex

namespace db::orgstructure {

// Object types of the organisation structure.
constexpr QLatin1String SUBJECTROOT("OT_SUBJECTROOT");
constexpr QLatin1String FIRM("OT_FIRM");
constexpr QLatin1String DEPARTMENT("OT_DEPARTMENT");
constexpr QLatin1String WORKER("OT_WORKER");

} // namespace db::orgstructure

namespace db::guide {

// Object types of the shift guide.
constexpr QLatin1String SHIFT("OT_SCHEDULE_SHIFT");
constexpr QLatin1String INTERVAL("OT_SHIFT_INTERVAL");

} // namespace db::guide

namespace db::param {

constexpr QLatin1String NAME("PT_NAME"); ///< what a person reads
constexpr QLatin1String CODE("PT_CODE"); ///< short code of a shift, such as "Н"
constexpr QLatin1String COLOR("PT_COLOR"); ///< `QColor::name()` text
constexpr QLatin1String OBJECTSTATE("PT_OBJECTSTATE"); ///< "d" for a deleted object, else empty
constexpr QLatin1String WORKERNUM("PT_WORKERNUM"); ///< personnel number
constexpr QLatin1String SCHEDULE("PT_SCHEDULE"); ///< decimal identifier of an employee's main schedule
constexpr QLatin1String POSITION("PT_POSITION"); ///< job title
constexpr QLatin1String PARENT("PT_PARENT"); ///< decimal identifier of the unit above
constexpr QLatin1String PHOTO("PT_PHOTO"); ///< name of the photo blob
constexpr QLatin1String INTERVALS("PT_INTERVALS"); ///< of a shift: identifiers of its intervals in order, by commas
constexpr QLatin1String START("PT_START"); ///< of an interval: seconds from midnight
constexpr QLatin1String FINISH("PT_FINISH"); ///< of an interval: seconds from midnight

} // namespace db::param
