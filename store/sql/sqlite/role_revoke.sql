DELETE FROM granted_role
WHERE role = :role
