SELECT date, mode
FROM production_day
WHERE date BETWEEN :first AND :last AND mode IN (0, 2, 3)
