/* With -E the preprocessed file stays, and nothing is compiled. */
#ifdef BRIGHT
surface bright() { Ci = TWICE * Cs; }
#endif
