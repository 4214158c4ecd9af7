SELECT use_holidays, changed_by, changed_at
FROM schedule
WHERE id = :id
