SELECT reply
FROM request_log
WHERE request_id = :request_id AND login = :login
