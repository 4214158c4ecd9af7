SELECT id, name, code, color, state
FROM schedule_shift
