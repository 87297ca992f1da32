// mocomp
