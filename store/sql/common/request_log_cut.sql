DELETE FROM request_log
WHERE {{request_log_removable}}
