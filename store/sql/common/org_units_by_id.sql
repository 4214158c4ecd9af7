{{org_units_all}}
WHERE id IN ({{id_list}})
