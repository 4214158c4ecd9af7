DELETE FROM schedule
WHERE id IN ({{id_list}})
