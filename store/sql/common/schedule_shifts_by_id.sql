{{schedule_shifts_all}}
WHERE id IN ({{id_list}})
