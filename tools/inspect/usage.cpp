#include "tools/inspect/arguments.h"

const wchar_t* UsageText() {
    return L"usage: inspect decoders\n"
           L"       inspect gather [OPTION VALUE]... FOLDER...\n"
           L"       inspect convert [OPTION VALUE]... FOLDER...\n"
           L"       inspect properties FILE...\n"
           L"       inspect --help\n";
}

const wchar_t* HelpText() {
    return L"\n"
           L"Runs the batch converter's own code from a console.\n"
           L"\n"
           L"Commands:\n"
           L"  decoders    Shows each library in the folder \"decoder\" beside this program: the\n"
           L"              types and properties that it offers, or why it is not used; then\n"
           L"              which library is remembered for which extension.\n"
           L"  gather      Prints the full path of each audio file that would be converted, one\n"
           L"              in a line, as UTF-8.\n"
           L"  convert     Gathers the same files, hands their list to \"Wavewright.exe\" beside\n"
           L"              this program and waits until that has ended.\n"
           L"  properties  Prints of each file its path, then every column that a list would\n"
           L"              show for it, one in a line: what the file system knows, then what the\n"
           L"              file's decoder tells; and last the numbers that lists sort by.\n"
           L"\n"
           L"What to gather, at least one of the first three:\n"
           L"  FOLDER                   A folder and all that lies beneath it.\n"
           L"  --folder-only FOLDER     A folder without its sub-folders.\n"
           L"  --include-file FILE      A file, whatever its type and whether or not it exists.\n"
           L"  --exclude-folder FOLDER  Leaves out a sub-folder and all that lies beneath it.\n"
           L"  --exclude-file FILE      Leaves out one file of the folders.\n"
           L"  --exclude-type .EXT      Leaves out a type of file.\n"
           L"Each may be given any number of times. Paths may be relative to the current\n"
           L"folder. Types that are left out in the program's own filter are left out here too.\n"
           L"\n"
           L"Exit codes:\n"
           L"  0  Done.\n"
           L"  1  No usable decoder, no file found, a file that no decoder reads, the converter\n"
           L"     could not be started, or the output could not be written.\n"
           L"  2  The command line makes no sense, or names a folder or file that is not there.\n";
}
