SELECT 1
FROM request_log
WHERE stored_at < :before
LIMIT 1
