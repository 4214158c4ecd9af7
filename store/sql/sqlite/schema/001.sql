-- Statements are separated by empty lines. Dates are 'YYYY-MM-DD', times of day are seconds from midnight,
-- moments are UTC in ISO 8601.
PRAGMA application_id = 0x4F727678;

CREATE TABLE schema_version (
    version INTEGER NOT NULL
);

INSERT INTO schema_version (version) VALUES (0);

CREATE TABLE feed_info (
    feed_id TEXT NOT NULL,
    cut_seq INTEGER NOT NULL DEFAULT 0 -- entries of the log up to this one may be missing
);

INSERT INTO feed_info (feed_id) VALUES (lower(hex(randomblob(16))));

CREATE TABLE granted_role (
    role TEXT NOT NULL PRIMARY KEY
) WITHOUT ROWID;

INSERT INTO granted_role (role) VALUES
    ('RL_SCHEDULE_SHOW'), ('RL_SCHEDULE_CREATE'), ('RL_SCHEDULE_UPDATE'), ('RL_SCHEDULE_DELETE');

CREATE TABLE change_log (
    seq INTEGER PRIMARY KEY AUTOINCREMENT,
    entity TEXT NOT NULL,
    id INTEGER NOT NULL,
    op TEXT NOT NULL CHECK (op IN ('i', 'u', 'd')),
    name TEXT -- of a blob
);

CREATE TABLE request_log (
    request_id TEXT NOT NULL PRIMARY KEY,
    login TEXT NOT NULL,
    result INTEGER NOT NULL,
    reply BLOB NOT NULL,
    stored_at TEXT NOT NULL
) WITHOUT ROWID;

CREATE INDEX request_log_stored_at ON request_log (stored_at);

-- The identifiers of everything in the organisation tree.
CREATE TABLE object (
    id INTEGER PRIMARY KEY AUTOINCREMENT CHECK (id BETWEEN 1 AND 2147483647),
    kind TEXT NOT NULL CHECK (kind IN ('unit', 'subject'))
);

CREATE TABLE org_unit (
    id INTEGER NOT NULL PRIMARY KEY REFERENCES object (id),
    parent_id INTEGER REFERENCES org_unit (id),
    type TEXT NOT NULL CHECK (type IN ('root', 'firm', 'department')),
    name TEXT NOT NULL,
    state TEXT NOT NULL DEFAULT '' CHECK (state IN ('', 'd')) -- 'd': deleted
);

CREATE UNIQUE INDEX org_unit_one_root ON org_unit (type) WHERE type = 'root';

CREATE INDEX org_unit_parent ON org_unit (parent_id);

CREATE TABLE schedule (
    id INTEGER PRIMARY KEY AUTOINCREMENT CHECK (id BETWEEN 1 AND 2147483647),
    name TEXT NOT NULL,
    state INTEGER NOT NULL DEFAULT 1,
    type INTEGER NOT NULL CHECK (type BETWEEN 0 AND 4),
    color TEXT NOT NULL DEFAULT '',
    start_date TEXT,
    use_holidays INTEGER NOT NULL DEFAULT 0,
    free_start INTEGER NOT NULL DEFAULT 0,
    free_finish INTEGER NOT NULL DEFAULT 0,
    free_norm INTEGER NOT NULL DEFAULT 0,
    free_break INTEGER NOT NULL DEFAULT 0,
    comment TEXT NOT NULL DEFAULT '',
    worker_id INTEGER REFERENCES subject (id),
    mode TEXT NOT NULL DEFAULT '', -- days and shifts as JSON; empty: none of either
    version INTEGER NOT NULL DEFAULT 1,
    changed_by TEXT NOT NULL,
    changed_at TEXT NOT NULL,
    CHECK (type <> 4 OR (worker_id IS NOT NULL AND start_date IS NOT NULL))
);

CREATE UNIQUE INDEX schedule_one_personal ON schedule (worker_id, start_date) WHERE type = 4 AND state = 1;

CREATE INDEX schedule_worker ON schedule (worker_id) WHERE worker_id IS NOT NULL;

CREATE TABLE subject (
    id INTEGER NOT NULL PRIMARY KEY REFERENCES object (id),
    name TEXT NOT NULL,
    personnel_number TEXT NOT NULL DEFAULT '',
    position TEXT NOT NULL DEFAULT '',
    unit_id INTEGER REFERENCES org_unit (id),
    schedule_id INTEGER REFERENCES schedule (id),
    state TEXT NOT NULL DEFAULT '' CHECK (state IN ('', 'd')) -- 'd': deleted
);

CREATE INDEX subject_unit ON subject (unit_id);

CREATE INDEX subject_schedule ON subject (schedule_id) WHERE schedule_id IS NOT NULL;

CREATE TABLE schedule_shift (
    id INTEGER PRIMARY KEY AUTOINCREMENT CHECK (id BETWEEN 1 AND 2147483647),
    name TEXT NOT NULL,
    code TEXT NOT NULL DEFAULT '',
    color TEXT NOT NULL DEFAULT '',
    state TEXT NOT NULL DEFAULT '' CHECK (state IN ('', 'd')), -- 'd': deleted
    version INTEGER NOT NULL DEFAULT 1
);

CREATE TABLE shift_interval (
    id INTEGER PRIMARY KEY AUTOINCREMENT CHECK (id BETWEEN 1 AND 2147483647),
    shift_id INTEGER NOT NULL REFERENCES schedule_shift (id) ON DELETE CASCADE,
    position INTEGER NOT NULL,
    start INTEGER NOT NULL CHECK (start BETWEEN 0 AND 86400),
    finish INTEGER NOT NULL CHECK (finish BETWEEN 0 AND 86400),
    UNIQUE (shift_id, position)
);

CREATE TABLE schedule_calendar_day (
    schedule_id INTEGER NOT NULL REFERENCES schedule (id) ON DELETE CASCADE,
    date TEXT NOT NULL,
    shift_id INTEGER REFERENCES schedule_shift (id),
    day_mode INTEGER NOT NULL CHECK (day_mode BETWEEN 0 AND 3),
    intervals TEXT NOT NULL DEFAULT '', -- [[start, finish], …]; empty: those of the shift
    revision INTEGER NOT NULL DEFAULT 1,
    PRIMARY KEY (schedule_id, date)
) WITHOUT ROWID;

CREATE INDEX schedule_calendar_day_shift ON schedule_calendar_day (shift_id) WHERE shift_id IS NOT NULL;

CREATE TABLE production_day (
    date TEXT NOT NULL PRIMARY KEY,
    mode INTEGER NOT NULL CHECK (mode BETWEEN 0 AND 3),
    note TEXT NOT NULL DEFAULT ''
) WITHOUT ROWID;

CREATE TABLE blob (
    object_id INTEGER NOT NULL REFERENCES object (id) ON DELETE CASCADE,
    name TEXT NOT NULL,
    md5 BLOB NOT NULL, -- 16 bytes
    data BLOB NOT NULL,
    PRIMARY KEY (object_id, name)
);

CREATE TRIGGER schedule_inserted AFTER INSERT ON schedule BEGIN
    INSERT INTO change_log (entity, id, op) VALUES ('schedule', new.id, 'i');
END;

CREATE TRIGGER schedule_updated AFTER UPDATE ON schedule BEGIN
    INSERT INTO change_log (entity, id, op) VALUES ('schedule', new.id, 'u');
END;

CREATE TRIGGER schedule_deleted AFTER DELETE ON schedule BEGIN
    INSERT INTO change_log (entity, id, op) VALUES ('schedule', old.id, 'd');
END;

CREATE TRIGGER subject_inserted AFTER INSERT ON subject BEGIN
    INSERT INTO change_log (entity, id, op) VALUES ('subject', new.id, 'i');
END;

CREATE TRIGGER subject_updated AFTER UPDATE ON subject BEGIN
    INSERT INTO change_log (entity, id, op) VALUES ('subject', new.id, 'u');
END;

CREATE TRIGGER subject_deleted AFTER DELETE ON subject BEGIN
    INSERT INTO change_log (entity, id, op) VALUES ('subject', old.id, 'd');
END;

CREATE TRIGGER org_unit_inserted AFTER INSERT ON org_unit BEGIN
    INSERT INTO change_log (entity, id, op) VALUES ('org_unit', new.id, 'i');
END;

CREATE TRIGGER org_unit_updated AFTER UPDATE ON org_unit BEGIN
    INSERT INTO change_log (entity, id, op) VALUES ('org_unit', new.id, 'u');
END;

CREATE TRIGGER org_unit_deleted AFTER DELETE ON org_unit BEGIN
    INSERT INTO change_log (entity, id, op) VALUES ('org_unit', old.id, 'd');
END;

CREATE TRIGGER schedule_shift_inserted AFTER INSERT ON schedule_shift BEGIN
    INSERT INTO change_log (entity, id, op) VALUES ('schedule_shift', new.id, 'i');
END;

CREATE TRIGGER schedule_shift_updated AFTER UPDATE ON schedule_shift BEGIN
    INSERT INTO change_log (entity, id, op) VALUES ('schedule_shift', new.id, 'u');
END;

CREATE TRIGGER schedule_shift_deleted AFTER DELETE ON schedule_shift BEGIN
    INSERT INTO change_log (entity, id, op) VALUES ('schedule_shift', old.id, 'd');
END;

-- A shift's record lists its intervals, so it changes with them.
CREATE TRIGGER shift_interval_inserted AFTER INSERT ON shift_interval BEGIN
    INSERT INTO change_log (entity, id, op)
        VALUES ('shift_interval', new.id, 'i'), ('schedule_shift', new.shift_id, 'u');
END;

CREATE TRIGGER shift_interval_updated AFTER UPDATE ON shift_interval BEGIN
    INSERT INTO change_log (entity, id, op)
        VALUES ('shift_interval', new.id, 'u'), ('schedule_shift', new.shift_id, 'u'),
            ('schedule_shift', old.shift_id, 'u');
END;

CREATE TRIGGER shift_interval_deleted AFTER DELETE ON shift_interval BEGIN
    INSERT INTO change_log (entity, id, op)
        VALUES ('shift_interval', old.id, 'd'), ('schedule_shift', old.shift_id, 'u');
END;

CREATE TRIGGER blob_inserted AFTER INSERT ON blob BEGIN
    INSERT INTO change_log (entity, id, op, name) VALUES ('blob', new.object_id, 'i', new.name);
END;

CREATE TRIGGER blob_updated AFTER UPDATE ON blob BEGIN
    INSERT INTO change_log (entity, id, op, name) VALUES ('blob', new.object_id, 'u', new.name);
END;

CREATE TRIGGER blob_deleted AFTER DELETE ON blob BEGIN
    INSERT INTO change_log (entity, id, op, name) VALUES ('blob', old.object_id, 'd', old.name);
END;

-- For reports: the work modes as tables, with a row per day of the cycle and a row per interval of a shift.
CREATE VIEW schedule_mode_day AS
SELECT schedule.id AS schedule_id, day.key AS position, day.value ->> 'shift' AS shift,
    day.value ->> 'off' AS day_off
FROM schedule, json_each(schedule.mode, '$.days') AS day
WHERE schedule.mode <> '';

CREATE VIEW schedule_mode_interval AS
SELECT schedule.id AS schedule_id, shift.key AS shift, interval.key AS position,
    interval.value ->> 'start' AS start, interval.value ->> 'finish' AS finish
FROM schedule, json_each(schedule.mode, '$.shifts') AS shift, json_each(shift.value, '$.times') AS interval
WHERE schedule.mode <> '';
