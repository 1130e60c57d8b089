// Nothing: the program around the precompiled header of the tests.
