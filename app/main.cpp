#include "app/Cli.h"

int main(int argc, char** argv) { return kelaz::RunMain(argc, argv); }
