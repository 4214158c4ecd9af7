UPDATE feed_info
SET cut_seq = :seq
