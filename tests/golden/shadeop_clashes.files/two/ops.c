/* A library with the same file name. */
const char* const tint_shadeops[] = {"color tint(float)", "", "", "", "", ""};

void tint(void) { }
