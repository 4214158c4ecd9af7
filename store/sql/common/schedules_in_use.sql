SELECT schedule.name, count(*)
FROM subject JOIN schedule ON schedule.id = subject.schedule_id
WHERE subject.schedule_id IN ({{id_list}}) AND subject.state = ''
GROUP BY schedule.id, schedule.name
ORDER BY count(*) DESC
LIMIT 1
