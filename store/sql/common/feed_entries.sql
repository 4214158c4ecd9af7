SELECT DISTINCT entity, id, name
FROM change_log
WHERE seq > :last
