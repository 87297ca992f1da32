// fileio
