// Declares the arguments of a small image-copy command through the
// command-line parser and prints what it parsed.
#include <clocale>
#include <cstring>
#include <iostream>

#include <tyx/TyxClMultiValueArg.h>
#include <tyx/TyxClParser.h>
#include <tyx/TyxClSwitchArg.h>
#include <tyx/TyxClValueArg.h>
#include <tyx/TyxNumValidator.h>

using namespace tyx;

int main(int argc, char **argv)
{
    std::setlocale(LC_ALL, "C.UTF-8");
    TyxClParser parser(L"Copies the chosen bands of an image.", L"4.1.0");

    TyxClValueArg *input = new TyxClValueArg(TyxMetaProperty(L'i', L"input", L"path", TyxMetaType::String,
                                                             TyxMetaFlag::Required, L"Image to read"));
    TyxClValueArg *output =
        new TyxClValueArg(TyxMetaProperty(L'o', L"output", L"path", TyxMetaType::String, TyxMetaFlag(),
                                          L"Image to write, the input's name with \"_copy\" by default"),
                          TyxVariant(L"(input)_copy"));
    TyxMetaProperty levelProperty(L'l', L"level", L"1..9", TyxMetaType::Int, TyxMetaFlag(),
                                  L"Compression level");
    // The property keeps its own copy of the validator.
    const TyxNumValidator<int> oneToNine(0x05, 1, 9);
    levelProperty.setValidator(&oneToNine);
    TyxClValueArg *level = new TyxClValueArg(levelProperty, TyxVariant(6));
    TyxClSwitchArg *quiet = new TyxClSwitchArg(
        TyxMetaProperty(L'q', L"quiet", TyxString(), TyxMetaType::Bool, TyxMetaFlag(), L"Print nothing"));
    TyxClMultiValueArg *bands =
        new TyxClMultiValueArg(TyxMetaProperty(L'b', L"band", L"index", TyxMetaType::Int, TyxMetaFlag(),
                                               L"Band to copy, from 0; all bands without it"));
    TyxClSwitchArg *rgb = new TyxClSwitchArg(TyxMetaProperty(L'r', L"rgb", TyxString(), TyxMetaType::Bool,
                                                             TyxMetaFlag::Required, L"Write three bands"));
    TyxClSwitchArg *grey = new TyxClSwitchArg(TyxMetaProperty(L'g', L"grey", TyxString(), TyxMetaType::Bool,
                                                              TyxMetaFlag::Required, L"Write one band"));
    parser.add(input);
    parser.add(output);
    parser.add(level);
    parser.add(quiet);
    parser.add(bands);
    parser.xorAdd(rgb, grey);

    // The usage shows the program's name without its folder.
    if (argc > 0 && argv[0]) {
        if (const char *slash = std::strrchr(argv[0], '/'))
            argv[0] = const_cast<char *>(slash + 1);
    }
    if (!parser.parse(argc, argv).isEmpty())
        return 1;

    std::wcout << L"input: " << input->variant().value<TyxString>() << L"\n";
    std::wcout << L"output: " << output->variant().value<TyxString>() << L"\n";
    std::wcout << L"level: " << level->variant().value<int>() << L"\n";
    std::wcout << L"quiet: " << (quiet->switchValue() ? L"yes" : L"no") << L"\n";
    std::wcout << L"bands:";
    for (const TyxVariant &band : bands->values())
        std::wcout << L" " << band.value<int>();
    std::wcout << L"\n";
    std::wcout << L"mode: " << (rgb->switchValue() ? L"rgb" : L"grey") << L"\n";
    return 0;
}
