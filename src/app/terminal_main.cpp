#include "app/terminal.h"

int main(int argc, char** argv) { return RunTerminal({argv + 1, argv + argc}); }
