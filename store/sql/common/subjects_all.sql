SELECT id, name, personnel_number, position, unit_id, schedule_id, state
FROM subject
