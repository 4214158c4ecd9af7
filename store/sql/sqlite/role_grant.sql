INSERT INTO granted_role (role)
VALUES (:role)
ON CONFLICT DO NOTHING
