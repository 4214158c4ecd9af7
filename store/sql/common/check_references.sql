WITH RECURSIVE above (id, parent_id) AS (
    SELECT id, parent_id FROM org_unit WHERE parent_id IS NOT NULL
    UNION
    SELECT above.id, org_unit.parent_id FROM above JOIN org_unit ON org_unit.id = above.parent_id
    WHERE org_unit.parent_id IS NOT NULL
)
SELECT 'subject.object' AS kind, subject.id AS record, NULL AS missing FROM subject
WHERE NOT EXISTS (SELECT 1 FROM object WHERE object.id = subject.id AND kind = 'subject')
UNION ALL
SELECT 'subject.unit', subject.id, unit_id FROM subject
WHERE unit_id IS NOT NULL AND NOT EXISTS (SELECT 1 FROM org_unit WHERE org_unit.id = unit_id)
UNION ALL
SELECT 'subject.schedule', subject.id, schedule_id FROM subject
WHERE schedule_id IS NOT NULL AND NOT EXISTS (SELECT 1 FROM schedule WHERE schedule.id = schedule_id)
UNION ALL
SELECT 'unit.object', org_unit.id, NULL FROM org_unit
WHERE NOT EXISTS (SELECT 1 FROM object WHERE object.id = org_unit.id AND kind = 'unit')
UNION ALL
SELECT 'unit.parent', unit.id, unit.parent_id FROM org_unit AS unit
WHERE parent_id IS NOT NULL AND NOT EXISTS (SELECT 1 FROM org_unit WHERE org_unit.id = unit.parent_id)
UNION ALL
SELECT 'unit.cycle', id, NULL FROM above WHERE id = parent_id
UNION ALL
SELECT 'schedule.worker', schedule.id, worker_id FROM schedule
WHERE worker_id IS NOT NULL AND NOT EXISTS (SELECT 1 FROM subject WHERE subject.id = worker_id)
UNION ALL
SELECT 'schedule.twice', worker_id, start_date FROM schedule WHERE type = 4 AND state = 1
GROUP BY worker_id, start_date HAVING count(*) > 1
UNION ALL
SELECT 'interval.shift', shift_interval.id, shift_id FROM shift_interval
WHERE NOT EXISTS (SELECT 1 FROM schedule_shift WHERE schedule_shift.id = shift_id)
UNION ALL
SELECT DISTINCT 'day.schedule', schedule_id, NULL FROM schedule_calendar_day
WHERE NOT EXISTS (SELECT 1 FROM schedule WHERE schedule.id = schedule_id)
UNION ALL
SELECT DISTINCT 'day.shift', schedule_id, shift_id FROM schedule_calendar_day
WHERE shift_id IS NOT NULL AND NOT EXISTS (SELECT 1 FROM schedule_shift WHERE schedule_shift.id = shift_id)
UNION ALL
SELECT 'blob.object', object_id, name FROM blob
WHERE NOT EXISTS (SELECT 1 FROM object WHERE object.id = object_id)
UNION ALL
SELECT 'service.rows', count(*), 'feed_info' FROM feed_info HAVING count(*) <> 1
UNION ALL
SELECT 'service.rows', count(*), 'schema_version' FROM schema_version HAVING count(*) <> 1
UNION ALL
SELECT 'service.cut', log.seq, feed_info.cut_seq FROM feed_info,
    (SELECT coalesce(max(seq), 0) AS seq FROM change_log) AS log
WHERE feed_info.cut_seq > log.seq
