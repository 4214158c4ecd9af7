SELECT role
FROM granted_role
ORDER BY role
