INSERT INTO schedule (name, state, type, color, start_date, use_holidays, free_start, free_finish, free_norm,
    free_break, comment, worker_id, mode, version, changed_by, changed_at)
VALUES (:name, 1, :type, :color, :start_date, :use_holidays, :free_start, :free_finish, :free_norm,
    :free_break, :comment, :worker_id, :mode, 1, :login, :now)
RETURNING id
