// Compiles the headers that the test programs share; nothing is in it.
