SELECT name, seq
FROM sqlite_sequence
ORDER BY name
