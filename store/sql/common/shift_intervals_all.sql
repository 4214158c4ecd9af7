SELECT id, start, finish
FROM shift_interval
