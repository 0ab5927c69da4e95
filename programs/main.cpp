#include "programs/commands/Program.h"

int main(int argc, char** argv) {
  vemra::commands::Console console = vemra::commands::ProcessConsole();
  return vemra::commands::RunProgram({argv + 1, argv + argc}, console);
}
