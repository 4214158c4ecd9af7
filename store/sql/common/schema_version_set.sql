UPDATE schema_version
SET version = :version
