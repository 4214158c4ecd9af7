SELECT date, shift_id, day_mode, intervals, revision
FROM schedule_calendar_day
WHERE schedule_id = :schedule_id AND date BETWEEN :first AND :last
ORDER BY date
