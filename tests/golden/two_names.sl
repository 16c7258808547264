/* The output is named after the shader, not after the source, and is written to the folder of -d. */
surface glow()
{
    Ci = Cs;
}
