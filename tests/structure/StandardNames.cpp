// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/StandardNames.h"

#include <QHash>
#include <QRegularExpression>

namespace {

/// Header by header what stands behind "std::" of its names: those that the project uses, and
/// their neighbours.
const char *const standardNames = R"(
algorithm: adjacent_find all_of any_of binary_search clamp copy copy_if copy_n count count_if equal
algorithm: equal_range fill fill_n find find_first_of find_if find_if_not for_each for_each_n
algorithm: generate generate_n includes inplace_merge is_sorted lexicographical_compare lower_bound
algorithm: max max_element merge min min_element minmax minmax_element mismatch move_backward
algorithm: next_permutation none_of nth_element partial_sort partition ranges remove remove_if
algorithm: replace replace_if reverse reverse_copy rotate search set_difference set_intersection
algorithm: set_union shuffle sort stable_partition stable_sort swap_ranges transform unique
algorithm: unique_copy upper_bound
array: array begin data end get size to_array tuple_size
atomic: atomic atomic_bool atomic_flag atomic_int memory_order_acquire memory_order_relaxed
atomic: memory_order_release
bit: bit_cast bit_ceil bit_floor bit_width countl_zero countr_zero endian has_single_bit popcount
bit: rotl rotr
charconv: chars_format from_chars from_chars_result to_chars to_chars_result
chrono: chrono chrono_literals
cmath: abs ceil cos exp fabs floor hypot isfinite isnan log log10 log2 lround pow round sin sqrt
cmath: trunc
csignal: raise sig_atomic_t signal
cstddef: byte max_align_t nullptr_t ptrdiff_t size_t to_integer
cstdint: int16_t int32_t int64_t int8_t intptr_t uint16_t uint32_t uint64_t uint8_t uintptr_t
cstdio: FILE fclose feof ferror fflush fgetc fgets fopen fprintf fputc fputs fread fseek ftell
cstdio: fwrite getchar perror printf putchar puts remove rename size_t snprintf
cstdlib: _Exit abort abs atexit atoi calloc exit free getenv malloc mkstemp quick_exit realloc
cstdlib: size_t strtod strtol strtoll strtoul strtoull system
cstring: memchr memcmp memcpy memmove memset size_t strchr strcmp strerror strlen strncmp strrchr
cstring: strstr
deque: deque erase erase_if
exception: current_exception exception exception_ptr rethrow_exception terminate uncaught_exceptions
filesystem: filesystem
fstream: fstream ifstream ofstream
functional: bit_and bit_or bit_xor cref equal_to function greater greater_equal hash invoke less
functional: less_equal minus multiplies not_fn plus ref reference_wrapper
initializer_list: initializer_list
iterator: advance back_insert_iterator back_inserter begin bidirectional_iterator_tag cbegin cend
iterator: data distance end forward_iterator_tag front_inserter input_iterator_tag inserter
iterator: istreambuf_iterator iterator_traits make_move_iterator next ostream_iterator prev
iterator: random_access_iterator_tag rbegin rend reverse_iterator size ssize
limits: numeric_limits
map: begin data end erase_if map multimap size
memory: addressof align allocator allocator_traits const_pointer_cast default_delete destroy_at
memory: dynamic_pointer_cast enable_shared_from_this make_shared make_unique shared_ptr
memory: static_pointer_cast to_address uninitialized_copy unique_ptr weak_ptr
mutex: call_once lock_guard mutex once_flag recursive_mutex scoped_lock unique_lock
new: align_val_t bad_alloc bad_array_new_length launder nothrow nothrow_t set_new_handler
numeric: accumulate adjacent_difference gcd inner_product iota lcm midpoint partial_sum reduce
numeric: transform_reduce
optional: bad_optional_access make_optional nullopt nullopt_t optional
regex: cmatch regex regex_match regex_replace regex_search smatch sregex_iterator
set: begin data end erase_if multiset set size
span: as_bytes dynamic_extent span
sstream: istringstream ostringstream stringstream
stdexcept: domain_error invalid_argument length_error logic_error out_of_range overflow_error
stdexcept: range_error runtime_error underflow_error
string: basic_string begin char_traits data end erase erase_if getline size stod stoi stol stoll
string: stoul stoull string string_literals to_string u16string u32string u8string wstring
string_view: basic_string_view begin data end size string_view string_view_literals u16string_view
string_view: u32string_view
system_error: errc error_category error_code error_condition generic_category make_error_code
system_error: system_category system_error
thread: jthread this_thread thread
tuple: apply forward_as_tuple get ignore make_from_tuple make_tuple tie tuple tuple_element_t
tuple: tuple_size
type_traits: add_const_t common_type_t conditional_t decay_t enable_if_t false_type
type_traits: integral_constant invoke_result_t is_arithmetic_v is_base_of_v is_convertible_v
type_traits: is_enum_v is_integral_v is_same_v is_trivially_copyable_v is_unsigned_v make_signed_t
type_traits: make_unsigned_t remove_cvref_t remove_reference_t true_type underlying_type_t void_t
unordered_map: erase_if unordered_map
unordered_set: erase_if unordered_set
utility: as_const cmp_equal cmp_greater cmp_less cmp_less_equal declval exchange forward get
utility: in_place in_place_t in_range index_sequence integer_sequence make_index_sequence make_pair
utility: move move_if_noexcept pair piecewise_construct swap tuple_size
variant: bad_variant_access get get_if holds_alternative monostate variant variant_alternative_t
variant: variant_size_v visit
vector: begin data end erase erase_if size vector
)";

/// The same for macros.
const char *const standardMacros = R"(
cassert: assert
cerrno: errno EEXIST EINTR EINVAL ENOENT
climits: CHAR_BIT INT_MAX INT_MIN PATH_MAX
csignal: SIGABRT SIGCHLD SIGHUP SIGINT SIGKILL SIGPIPE SIGSTOP SIGTERM SIG_DFL SIG_IGN
cstddef: offsetof
cstdio: EOF stderr stdin stdout
cstdlib: EXIT_FAILURE EXIT_SUCCESS
)";

using Names = QHash<QString, QStringList>;

/// Adds to \a names, by header, what \a table says, each name with \a prefix before it.
void addTable(Names &names, const char *table, const QString &prefix) {
    const QString text = QString::fromLatin1(table);
    for (const QString &line : text.split(u'\n', Qt::SkipEmptyParts)) {
        const QString header = line.section(QStringLiteral(": "), 0, 0);
        for (const QString &name : line.section(QStringLiteral(": "), 1).split(u' '))
            names[header].append(prefix + name);
    }
}

const Names &namesByHeader() {
    static const Names all = [] {
        Names names;
        addTable(names, standardNames, QStringLiteral("std::"));
        addTable(names, standardMacros, QString());
        return names;
    }();
    return all;
}

/// Turned round: the headers that give a name.
Names headersByName() {
    Names headers;
    const Names &names = namesByHeader();
    for (auto header = names.begin(); header != names.end(); ++header)
        for (const QString &name : header.value())
            headers[name].append(header.key());
    for (QStringList &all : headers)
        all.sort();
    return headers;
}

} // namespace

QStringList standardHeadersOf(const QString &name) {
    static const Names headers = headersByName();
    return headers.value(name);
}

QSet<QString> namesOfStandardHeader(const QString &header) {
    static const QSet<QString> ofC = {QStringLiteral("cassert"), QStringLiteral("cerrno"),
                                      QStringLiteral("climits"), QStringLiteral("cmath"),
                                      QStringLiteral("csignal"), QStringLiteral("cstddef"),
                                      QStringLiteral("cstdint"), QStringLiteral("cstdio"),
                                      QStringLiteral("cstdlib"), QStringLiteral("cstring")};
    if (ofC.contains(header))
        return {};
    const QStringList names = namesByHeader().value(header);
    return {names.begin(), names.end()};
}

QSet<QString> wordsOf(const QString &code) {
    static const QRegularExpression word(QStringLiteral(R"((?:\bstd::)?\b\w+)"));
    QSet<QString> words;
    for (auto match = word.globalMatch(code); match.hasNext();)
        words.insert(match.next().captured());
    return words;
}
