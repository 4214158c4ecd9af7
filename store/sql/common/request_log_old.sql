SELECT 1
FROM request_log
WHERE {{request_log_may_go}}
LIMIT 1
