UPDATE schedule
SET name = :name, type = :type, color = :color, start_date = :start_date, use_holidays = :use_holidays,
    free_start = :free_start, free_finish = :free_finish, free_norm = :free_norm, free_break = :free_break,
    comment = :comment, worker_id = :worker_id, mode = :mode, version = version + 1, changed_by = :login,
    changed_at = :now
WHERE id = :id AND version = :version
