/* The output is named for the shader, not for the source, and goes where -d says. */
surface glow()
{
    Ci = Cs;
}
