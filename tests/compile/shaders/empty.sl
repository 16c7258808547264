surface empty() {}
