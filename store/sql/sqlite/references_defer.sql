PRAGMA defer_foreign_keys = ON
