INSERT INTO request_log (request_id, login, result, reply, stored_at)
VALUES (:request_id, :login, :result, :reply, :now)
