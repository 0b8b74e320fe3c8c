// Fuzz target: the tokenizer, with the character sets taken from the input's first line.
#include <sstream>

#include <tyx/TyxTokenizer.h>

#include "TyxFuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace tyx;
    fuzz::beQuiet();
    // "delimiters\x01comment\x01begin\x01end\x01whitespace\n" then the text;
    // without a first line the usual sets of the library's files.
    const TyxString input = fuzz::text(data, size);
    const size_t newline = input.find(L'\n');
    TyxString sets[5] = {L"=,;{}[]()", L"#", L"/*", L"*/", L" \t"};
    TyxString body = input;
    if (newline != TyxString::npos && input.compare(0, 1, L"\x01") == 0) {
        size_t start = 1;
        for (TyxString &set : sets) {
            const size_t end = std::min(input.find(L'\x01', start), newline);
            set = input.substr(start, end - start);
            start = end == newline ? newline : end + 1;
        }
        body = input.substr(newline + 1);
    }
    std::wistringstream in(body);
    TyxTokenizer tokenizer(in, sets[0], sets[1], sets[2], sets[3], sets[4]);
    TyxString token;
    TyxTokenizer::TokenType type;
    // Every call consumes input or ends it; the bound only guards the target.
    for (size_t i = 0; i <= body.size() + 1; ++i) {
        if (!tokenizer.nextToken(token, type)) {
            if (!in.good())
                break;
            if (!tokenizer.nextData(token, L';'))
                break;
        }
    }
    return 0;
}
