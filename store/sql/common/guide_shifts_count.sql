SELECT count(*)
FROM schedule_shift
WHERE id IN ({{id_list}})
