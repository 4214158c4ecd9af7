INSERT INTO shift_interval (shift_id, position, start, finish)
VALUES (:shift_id, :position, :start, :finish)
