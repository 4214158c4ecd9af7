INSERT INTO blob (object_id, name, md5, data)
VALUES (:object_id, :name, :md5, :data)
ON CONFLICT (object_id, name) DO UPDATE
SET md5 = excluded.md5, data = excluded.data
