stored_at < :before
    AND stored_at < (SELECT stored_at FROM request_log ORDER BY stored_at DESC LIMIT 1 OFFSET :keep)
