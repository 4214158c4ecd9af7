SELECT feed_id, cut_seq, (SELECT coalesce(max(seq), 0) FROM change_log)
FROM feed_info
