/* With -E the preprocessed file is kept, and nothing is compiled. */
#ifdef BRIGHT
surface bright() { Ci = TWICE * Cs; }
#endif
