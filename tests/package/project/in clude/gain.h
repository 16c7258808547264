#define GAIN 0.25
