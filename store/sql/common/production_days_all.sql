SELECT date
FROM production_day
