// port/record
