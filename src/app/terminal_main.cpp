#include "app/terminal.h"

int main(int argc, char** argv) { return marovane::RunTerminal({argv + 1, argv + argc}); }
