SELECT shift_id, id
FROM shift_interval
ORDER BY shift_id, position
