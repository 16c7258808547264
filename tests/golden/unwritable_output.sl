/* The output directory does not exist. */
surface unwritable_output()
{
    Ci = Cs;
}
