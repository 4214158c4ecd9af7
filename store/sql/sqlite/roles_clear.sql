DELETE FROM granted_role
