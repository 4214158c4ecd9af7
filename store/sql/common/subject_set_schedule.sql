UPDATE subject
SET schedule_id = :schedule_id
WHERE id = :id
