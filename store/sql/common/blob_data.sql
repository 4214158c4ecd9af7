SELECT data
FROM blob
WHERE object_id = :object_id AND name = :name
