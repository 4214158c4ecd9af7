INSERT INTO object (kind)
VALUES (:kind)
RETURNING id
