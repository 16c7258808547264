no newline #if
x