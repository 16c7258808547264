/* With -c the C++ file is written under the shader's name, and no compiler runs. */
surface glow()
{
    Ci = Cs;
}
