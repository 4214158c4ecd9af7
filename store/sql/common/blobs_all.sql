SELECT object_id, name, md5, data
FROM blob
