INSERT INTO subject (id, name, personnel_number, position, unit_id, schedule_id, state)
VALUES (:id, :name, :personnel_number, :position, :unit_id, :schedule_id, :state)
