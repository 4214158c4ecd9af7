SELECT name
FROM subject
WHERE id = :id
