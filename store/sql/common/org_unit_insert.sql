INSERT INTO org_unit (id, parent_id, type, name)
VALUES (:id, :parent_id, :type, :name)
