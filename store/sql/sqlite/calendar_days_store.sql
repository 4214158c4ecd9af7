INSERT INTO schedule_calendar_day (schedule_id, date, shift_id, day_mode, intervals)
SELECT :schedule_id, value ->> 'date', value ->> 'shift', value ->> 'mode', value ->> 'intervals'
FROM json_each(:days)
WHERE true -- without it, ON would begin a join condition
ON CONFLICT (schedule_id, date) DO UPDATE
SET shift_id = excluded.shift_id, day_mode = excluded.day_mode, intervals = excluded.intervals,
    revision = schedule_calendar_day.revision + 1
