{{shift_intervals_all}}
WHERE id IN ({{id_list}})
