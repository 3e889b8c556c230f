/* The smallest program a resource can ride on: no C runtime, an entry that returns. */
int entry(void) { return 0; }
