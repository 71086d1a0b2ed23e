// Build step: turns the tool's ASCII-armoured release key into a source file
// that holds the key's binary packets, the form gpgv reads.
//
//   kestrel_keyembed <key.asc> <output.cpp>

#include "dearmor.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

int main(int argc, char *argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: kestrel_keyembed <key.asc> <output.cpp>\n");
        return 2;
    }
    std::ifstream input(argv[1], std::ios::binary);
    const std::string armoured((std::istreambuf_iterator<char>(input)), std::istreambuf_iterator<char>());
    const std::optional<std::string> key = Launcher::dearmor(armoured);
    if (!input || !key) {
        std::fprintf(stderr, "kestrel_keyembed: %s is not an ASCII-armoured OpenPGP key\n", argv[1]);
        return 1;
    }

    std::ostringstream source;
    source << "// Made by kestrel_keyembed from " << argv[1] << "; do not edit.\n"
           << "#include \"releasekey.h\"\n\n"
           << "namespace Launcher {\n\nstd::string releaseKey()\n{\n"
           << "    static const unsigned char bytes[] = {";
    for (std::size_t i = 0; i < key->size(); ++i) {
        source << (i % 16 == 0 ? "\n        " : " ") << unsigned(static_cast<unsigned char>((*key)[i])) << ',';
    }
    source << "\n    };\n"
           << "    return std::string(reinterpret_cast<const char *>(bytes), sizeof bytes);\n}\n\n"
           << "} // namespace Launcher\n";

    std::ofstream output(argv[2], std::ios::binary | std::ios::trunc);
    output << source.str();
    if (!output) {
        std::fprintf(stderr, "kestrel_keyembed: cannot write %s\n", argv[2]);
        return 1;
    }
    return 0;
}
