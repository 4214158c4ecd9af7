SELECT id, name, state, type, color, start_date, use_holidays, free_start, free_finish, free_norm, free_break, comment,
    worker_id, version, mode
FROM schedule
