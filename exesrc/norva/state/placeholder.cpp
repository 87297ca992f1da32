// state
