SELECT feed_id, cut_seq, (SELECT coalesce(max(seq), 0) FROM change_log), (SELECT version FROM schema_version)
FROM feed_info
