SELECT count(*), min(schedule.name)
FROM subject JOIN schedule ON schedule.id = subject.schedule_id
WHERE subject.schedule_id IN ({{id_list}}) AND subject.state = ''
