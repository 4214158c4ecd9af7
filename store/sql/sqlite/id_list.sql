SELECT value FROM json_each(:ids)
