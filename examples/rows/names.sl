// options: -w0
/* The names of shaders, which are not there yet: the compiler says so and takes the empty text. */
surface names(output string mine = shadername(); output string other = "")
{
    other = shadername("displacement");

    Oi = 1;
    Ci = other == mine ? color(0, 1, 0) : color(1, 0, 0);
}
