{{schedules_all}}
WHERE id IN ({{id_list}})
