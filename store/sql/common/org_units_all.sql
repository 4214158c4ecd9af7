SELECT id, parent_id, type, name, state
FROM org_unit
