#include <CLI/CLI.hpp>

int main(int argc, char** argv) {
  CLI::App program("Cuts scale columns of a table into bins.", "mcbin");
  program.set_version_flag("--version", "mcbin " MCBIN_VERSION);
  CLI11_PARSE(program, argc, argv);
  return 0;
}
