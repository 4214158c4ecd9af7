SELECT date, shift_id, day_mode, intervals, revision, schedule_id
FROM schedule_calendar_day
