SELECT count(*)
FROM schedule
WHERE id IN ({{id_list}})
