INSERT INTO sqlite_sequence (name, seq)
VALUES (:name, :seq)
