#include "driver/SlcMain.h"

int main(int argumentCount, char** arguments)
{
    return main_(argumentCount, arguments);
}
