UPDATE subject
SET schedule_id = NULL
WHERE schedule_id IN ({{id_list}})
