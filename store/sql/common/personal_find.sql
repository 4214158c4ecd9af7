SELECT subject.name
FROM schedule JOIN subject ON subject.id = schedule.worker_id
WHERE schedule.worker_id = :worker_id AND schedule.start_date = :start_date AND schedule.type = 4
    AND schedule.state = 1 AND schedule.id <> :id
