INSERT INTO schedule_shift (name, code, color)
VALUES (:name, :code, :color)
RETURNING id
