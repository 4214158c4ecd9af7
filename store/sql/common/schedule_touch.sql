UPDATE schedule
SET version = version + 1, changed_by = :login, changed_at = :now
WHERE id = :id
