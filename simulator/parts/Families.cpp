// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "parts/Families.h"

#include "setup/Units.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace sim {
namespace {

using Words = std::vector<std::string_view>;

/// The code in a device's name that stands for its size.
struct Density {
    std::string_view code;
    std::size_t size;
};

/// Makers name their parts prefix, density, suffix, variant, package; all combinations are listed.
struct Family {
    Technology technology;
    Words prefixes;
    std::vector<Density> densities;
    Words suffixes;
    Words variants;
    Words packages;
};

const Family &twoWireEeproms() {
    static const Family family{Technology::SerialEeprom,
                               {"24AA",   "24FC",  "24LC",  "AT24C", "BL24C",   "BR24G", "BR24T",
                                "CAT24C", "FM24C", "FT24C", "GT24C", "HN58X24", "K24C",  "M24C",
                                "NM24C",  "S-24C", "ST24C", "TD24C", "XL24C",   "ZD24C"},
                               {{"01", 128},
                                {"02", 256},
                                {"04", 512},
                                {"08", 1 * kib},
                                {"16", 2 * kib},
                                {"32", 4 * kib},
                                {"64", 8 * kib},
                                {"128", 16 * kib},
                                {"256", 32 * kib},
                                {"512", 64 * kib}},
                               {"", "A", "B", "C", "D", "W"},
                               {""},
                               {"", "@SOIC8", "@TSSOP8", "@MSOP8", "@DFN8", "@DIP8"}};
    return family;
}

const Family &threeWireEeproms() {
    static const Family family{
        Technology::SerialEeprom,
        {"93AA", "93LC", "93C", "AT93C", "BR93L", "CAT93C", "FM93C", "M93C", "NM93C", "S-93C"},
        {{"46", 128}, {"56", 256}, {"66", 512}, {"76", 1 * kib}, {"86", 2 * kib}},
        {"", "A", "B", "C"},
        {"(x8)", "(x16)"},
        {"", "@SOIC8", "@TSSOP8"}};
    return family;
}

const Family &spiEeproms() {
    static const Family family{Technology::SerialEeprom,
                               {"25AA", "25LC", "AT25", "BR25", "CAT25", "M95", "ST95"},
                               {{"010", 128},
                                {"020", 256},
                                {"040", 512},
                                {"080", 1 * kib},
                                {"160", 2 * kib},
                                {"320", 4 * kib},
                                {"640", 8 * kib},
                                {"128", 16 * kib},
                                {"256", 32 * kib},
                                {"512", 64 * kib}},
                               {"", "A", "B", "C", "D"},
                               {""},
                               {"", "@SOIC8", "@TSSOP8", "@DFN8"}};
    return family;
}

const Family &serialFlashes() {
    static const Family family{Technology::SerialFlash,
                               {"AT25SF", "BY25Q", "EN25Q",  "FM25Q",  "GD25Q", "IS25LP",  "MX25L",
                                "N25Q",   "P25Q",  "PM25LQ", "PY25Q",  "S25FL", "SST25VF", "T25S",
                                "UC25HQ", "W25Q",  "W25X",   "XM25QH", "XT25F", "ZB25VQ"},
                               {{"10", 128 * kib},
                                {"20", 256 * kib},
                                {"40", 512 * kib},
                                {"80", 1 * mib},
                                {"16", 2 * mib},
                                {"32", 4 * mib},
                                {"64", 8 * mib},
                                {"128", 16 * mib}},
                               {"", "A", "B", "C", "E", "BV", "JV", "DW(1.8V)"},
                               {"", "(OTP)"},
                               {"", "@SOIC8", "@SOIC16", "@WSON8", "@USON8", "@VSOP8"}};
    return family;
}

const Family &uvEproms() {
    static const Family family{Technology::UvEprom,
                               {"AM27C", "AT27C", "CY27C", "DPV27C", "HN27C", "LG27C", "M27C",
                                "MBM27C", "MX27C", "NM27C", "NMC27C", "SMJ27C", "TMS27C", "UPD27C",
                                "WS27C"},
                               {{"64", 8 * kib},
                                {"128", 16 * kib},
                                {"256", 32 * kib},
                                {"512", 64 * kib},
                                {"010", 128 * kib},
                                {"020", 256 * kib},
                                {"040", 512 * kib},
                                {"080", 1 * mib}},
                               {"", "A", "B", "L", "R"},
                               {""},
                               {"@DIP32", "@PLCC32", "@SOIC32", "@TSOP32", "@TSOP32(ADP:Pin9to1)"}};
    return family;
}

const Family &parallelEeproms() {
    static const Family family{Technology::ParallelEeprom,
                               {"AM28C", "AT28C", "CAT28C", "HN58C", "KM28C", "LG28C", "M28C",
                                "NMC28C", "UPD28C", "X28C", "XLE28C", "XLS28C"},
                               {{"16", 2 * kib},
                                {"64", 8 * kib},
                                {"256", 32 * kib},
                                {"512", 64 * kib},
                                {"010", 128 * kib}},
                               {"", "A", "B", "E", "F"},
                               {""},
                               {"@DIP32", "@PLCC32", "@SOIC32", "@TSOP32", "@TSOP32(ADP:Pin9to1)"}};
    return family;
}

const Family &parallelFlashes() {
    static const Family family{Technology::ParallelFlash,
                               {"A29F", "AM29F", "AS29F", "AT49F", "EN29F", "HY29F", "M29F",
                                "MBM29F", "MX29F", "PM29F", "PM39F", "SST39LF", "SST39SF",
                                "SST39VF", "W39F", "W39L"},
                               {{"512", 64 * kib},
                                {"010", 128 * kib},
                                {"020", 256 * kib},
                                {"040", 512 * kib},
                                {"080", 1 * mib},
                                {"016", 2 * mib}},
                               {"", "A", "B", "C", "D", "T"},
                               {""},
                               {"@DIP32", "@PLCC32", "@TSOP32", "@TSOP40", "@TSOP32(ADP:Pin9to1)"}};
    return family;
}

/// The number of pins that a package's name ends with; parts without a package have eight.
int pinsOf(std::string_view package) {
    constexpr int pinsWithoutPackage = 8;
    constexpr int ten = 10;
    const auto start = package.find_first_of("0123456789");
    if (start == std::string_view::npos)
        return pinsWithoutPackage;
    int pins = 0;
    for (const char digit : package.substr(start)) {
        if (digit < '0' || digit > '9')
            break;
        pins = pins * ten + (digit - '0');
    }
    return pins;
}

std::string joined(const Words &words) {
    std::string name;
    for (const std::string_view word : words)
        name += word;
    return name;
}

Chip chipOf(const Family &family, const Density &density, const Words &words) {
    const bool lockable = family.technology == Technology::SerialFlash;
    return {.name = joined(words),
            .technology = family.technology,
            .size = density.size,
            .pins = pinsOf(words.back()),
            .protection = lockable ? Protection::Software : Protection::None};
}

std::size_t membersOf(const Family &family) {
    return family.prefixes.size() * family.densities.size() * family.suffixes.size() *
           family.variants.size() * family.packages.size();
}

/// Member \a number of the family, from 0; from one to the next the package changes first.
Chip memberOf(const Family &family, std::size_t number) {
    const auto next = [&number](const auto &choices) {
        const std::size_t choice = number % choices.size();
        number /= choices.size();
        return choices[choice];
    };
    const std::string_view package = next(family.packages);
    const std::string_view variant = next(family.variants);
    const std::string_view suffix = next(family.suffixes);
    const Density density = next(family.densities);
    const std::string_view prefix = next(family.prefixes);
    return chipOf(family, density, {prefix, density.code, suffix, variant, package});
}

bool visitFamily(const Family &family, const std::function<bool(const Chip &)> &visit) {
    for (std::size_t number = 0; number < membersOf(family); ++number)
        if (!visit(memberOf(family, number)))
            return false;
    return true;
}

} // namespace

void visitFamilyChips(const std::function<bool(const Chip &)> &visit) {
    for (const Family *family :
         {&twoWireEeproms(), &threeWireEeproms(), &spiEeproms(), &serialFlashes(), &uvEproms(),
          &parallelEeproms(), &parallelFlashes()})
        if (!visitFamily(*family, visit))
            return;
}

} // namespace sim
