/* Overloads of one method with different init and cleanup functions. */
#include <stddef.h>

typedef struct Record {
    const char* declaration;
    const char* init;
    const char* cleanup;
} Record;

const Record shade_shadeops[] = {
    {"color shade(float)", "", ""},
    {"color shade(float, float)", "start", ""},
    {"color shade(float, float, float)", "begin", "stop"},
    {"", "", ""},
};

void shade(void) { }
void start(void) { }
void begin(void) { }
void stop(void) { }
