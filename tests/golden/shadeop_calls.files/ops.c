struct {
    const char *declaration, *init, *cleanup;
} grade_shadeops[] = {
    {"float grade(float)", "start_grade", "stop_grade"},
    {"color grade(float, float)", "start_grade", "stop_grade"},
    {"", "", ""},
}, blend_shadeops[] = {
    {"color blend(color[], float)", "", ""},
    {"", "", ""},
};

void grade(void) { }
void start_grade(void) { }
void stop_grade(void) { }
void blend(void) { }
