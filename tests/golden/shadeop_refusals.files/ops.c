struct {
    const char *declaration, *init, *cleanup;
} shade_shadeops[] = {
    {"void shade(float)", "", ""},
    {"color tint(float)", "", ""},
    {"color shade(float", "", ""},
    {"color shade()", "", ""},
    {"color shade(float, float) const", "", ""},
    {"color shade(float, float)", "", ""},
    {"", "", ""},
}, dim_shadeops[] = {
    {"output float dim(float)", "", ""},
    {"", "", ""},
};

void shade(void) { }
