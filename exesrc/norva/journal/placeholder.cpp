// journal
