SELECT use_holidays, changed_by, changed_at, name
FROM schedule
WHERE id = :id
