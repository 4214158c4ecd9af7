SELECT 1
FROM request_log
WHERE {{request_log_removable}}
LIMIT 1
