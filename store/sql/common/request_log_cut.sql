DELETE FROM request_log
WHERE stored_at < :before
