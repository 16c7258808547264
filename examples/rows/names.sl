// options: -w0
/* Names of shaders, which are not supported yet: the compiler warns, and they are empty. */
surface names(output string mine = shadername(); output string other = "")
{
    other = shadername("displacement");

    Oi = 1;
    Ci = other == mine ? color(0, 1, 0) : color(1, 0, 0);
}
