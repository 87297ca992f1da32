// signal
