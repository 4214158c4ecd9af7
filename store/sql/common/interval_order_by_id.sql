SELECT shift_id, id
FROM shift_interval
WHERE shift_id IN ({{id_list}})
ORDER BY shift_id, position
