DELETE FROM change_log
WHERE seq <= :seq
