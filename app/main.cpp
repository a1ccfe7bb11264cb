#include "app/program.h"

int main(int argc, char** argv) { return app::RunProgram(argc, argv); }
