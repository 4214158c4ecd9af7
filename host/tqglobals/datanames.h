#pragma once

#include "latin1.h"

namespace orvex {

// Data names: the kinds of objects in the local storage.
constexpr QLatin1String SUBJECT_DATANAME = orvex::latin1("subject");
constexpr QLatin1String ORGSTRUCTURE_DATANAME = orvex::latin1("orgstructure");
constexpr QLatin1String SCHEDULE_SHIFT_DATANAME = orvex::latin1("schedule_shift");
constexpr QLatin1String SHIFT_INTERVAL_DATANAME = orvex::latin1("shift_interval");

/// The data of the menu entry that opens the shift guide.
constexpr QLatin1String SCHEDULE_SHIFT_GUIDES = SCHEDULE_SHIFT_DATANAME;

} // namespace orvex

namespace db::orgstructure {

// Object types of the organisation structure.
constexpr QLatin1String SUBJECTROOT = orvex::latin1("OT_SUBJECTROOT");
constexpr QLatin1String FIRM = orvex::latin1("OT_FIRM");
constexpr QLatin1String DEPARTMENT = orvex::latin1("OT_DEPARTMENT");
constexpr QLatin1String WORKER = orvex::latin1("OT_WORKER");

} // namespace db::orgstructure

namespace db::guide {

// Object types of the shift guide.
constexpr QLatin1String SHIFT = orvex::latin1("OT_SCHEDULE_SHIFT");
constexpr QLatin1String INTERVAL = orvex::latin1("OT_SHIFT_INTERVAL");

} // namespace db::guide

namespace db::param {

constexpr QLatin1String NAME = orvex::latin1("PT_NAME"); ///< display name
constexpr QLatin1String CODE = orvex::latin1("PT_CODE"); ///< short code of a shift, such as "Н"
constexpr QLatin1String COLOR = orvex::latin1("PT_COLOR"); ///< `QColor::name()` text
constexpr QLatin1String OBJECTSTATE = orvex::latin1("PT_OBJECTSTATE"); ///< "d" for a deleted object, else empty
constexpr QLatin1String WORKERNUM = orvex::latin1("PT_WORKERNUM"); ///< personnel number
constexpr QLatin1String SCHEDULE = orvex::latin1("PT_SCHEDULE"); ///< decimal identifier of an employee's main schedule
constexpr QLatin1String POSITION = orvex::latin1("PT_POSITION"); ///< job title
constexpr QLatin1String PARENT = orvex::latin1("PT_PARENT"); ///< decimal identifier of the unit above
constexpr QLatin1String PHOTO = orvex::latin1("PT_PHOTO"); ///< name of the blob with the photo
constexpr QLatin1String INTERVALS =
    orvex::latin1("PT_INTERVALS"); ///< of a shift: identifiers of its intervals in order, separated by commas
constexpr QLatin1String START = orvex::latin1("PT_START"); ///< of an interval: seconds from midnight
constexpr QLatin1String FINISH = orvex::latin1("PT_FINISH"); ///< of an interval: seconds from midnight

} // namespace db::param
