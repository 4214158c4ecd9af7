INSERT INTO production_day (date, mode, note)
VALUES (:date, :mode, :note)
ON CONFLICT (date) DO UPDATE
SET mode = excluded.mode, note = excluded.note
