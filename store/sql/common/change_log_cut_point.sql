SELECT max(seq) - :keep
FROM change_log
HAVING count(*) > 2 * :keep
