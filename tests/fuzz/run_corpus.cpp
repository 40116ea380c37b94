// Runs a fuzz target over files, for compilers that bring no fuzzer: FILE-OR-DIRECTORY…
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace fs = std::filesystem;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size);

namespace {

int RunFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(text.data()), text.size());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  int run = 0;
  for (int i = 1; i < argc; ++i) {
    if (fs::is_directory(argv[i])) {
      for (const auto& entry : fs::directory_iterator(argv[i])) run += RunFile(entry.path());
    } else {
      run += RunFile(argv[i]);
    }
  }
  std::printf("%d inputs\n", run);
  return run > 0 ? 0 : 1;
}
