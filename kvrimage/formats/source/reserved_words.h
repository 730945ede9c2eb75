#pragma once

#include <string_view>

namespace kvrimage {

// Reserved words, which cannot name an array, module or package. Separated by blanks and line ends.

/// Words of C, C++ (a header serves both) and <stdint.h>. main, linux and unix are not keywords, but main is
/// a function, and compilers define the others as 1.
inline constexpr std::string_view words_of_c = R"(
    _Alignas _Alignof _Atomic _Bool _Complex _Generic _Imaginary _Noreturn _Static_assert _Thread_local
    alignas alignof and and_eq asm auto bitand bitor bool break case catch char char16_t char32_t char8_t class
    co_await co_return co_yield compl concept const const_cast consteval constexpr constinit continue decltype
    default delete do double dynamic_cast else enum explicit export extern false float for friend goto if inline
    int linux long main mutable namespace new noexcept not not_eq nullptr operator or or_eq private protected public
    register reinterpret_cast requires restrict return short signed sizeof static static_assert static_cast struct
    switch template this thread_local throw true try typedef typeid typename typeof typeof_unqual union unix unsigned
    using virtual void volatile wchar_t while xor xor_eq
    int8_t int16_t int32_t int64_t uint8_t uint16_t uint32_t uint64_t intmax_t intptr_t uintmax_t uintptr_t
    int_fast8_t int_fast16_t int_fast32_t int_fast64_t uint_fast8_t uint_fast16_t uint_fast32_t uint_fast64_t
    int_least8_t int_least16_t int_least32_t int_least64_t uint_least8_t uint_least16_t uint_least32_t
    uint_least64_t)";

/// Functions and variables of the C library: those that gcc and clang know without a header, except variants
/// for other types (sinf), and common ones that would clash with a header.
inline constexpr std::string_view names_of_c_library = R"(
    INT16_C INT16_MAX INT16_MIN INT32_C INT32_MAX INT32_MIN INT64_C INT64_MAX INT64_MIN INT8_C INT8_MAX INT8_MIN
    INTMAX_C INTMAX_MAX INTMAX_MIN INTPTR_MAX INTPTR_MIN INT_FAST16_MAX INT_FAST16_MIN INT_FAST32_MAX INT_FAST32_MIN
    INT_FAST64_MAX INT_FAST64_MIN INT_FAST8_MAX INT_FAST8_MIN INT_LEAST16_MAX INT_LEAST16_MIN INT_LEAST32_MAX
    INT_LEAST32_MIN INT_LEAST64_MAX INT_LEAST64_MIN INT_LEAST8_MAX INT_LEAST8_MIN PTRDIFF_MAX PTRDIFF_MIN
    SIG_ATOMIC_MAX SIG_ATOMIC_MIN SIZE_MAX UINT16_C UINT16_MAX UINT32_C UINT32_MAX UINT64_C UINT64_MAX UINT8_C
    UINT8_MAX UINTMAX_C UINTMAX_MAX UINTPTR_MAX UINT_FAST16_MAX UINT_FAST32_MAX UINT_FAST64_MAX UINT_FAST8_MAX
    UINT_LEAST16_MAX UINT_LEAST32_MAX UINT_LEAST64_MAX UINT_LEAST8_MAX WCHAR_MAX WCHAR_MIN WINT_MAX WINT_MIN
    abort abs acos acosh aligned_alloc alloca asin asinh atan atan2 atanh atexit atof atoi atol bcmp bcopy
    bsearch bzero cabs cacos cacosh calloc carg casin casinh catan catanh cbrt ccos ccosh ceil cexp cimag clock
    clog clog10 conj copysign cos cosh cpow cproj creal csin csinh csqrt ctan ctanh ctime dgettext difftime div
    drem erf erfc errno exit exp exp10 exp2 expm1 fabs fclose fdim feclearexcept fegetenv fegetexceptflag
    fegetround feholdexcept feof feraiseexcept fesetenv fesetexceptflag fesetround fetestexcept feupdateenv
    fflush ffs ffsl fgetc fgets finite floor fma fmax fmin fmod fopen fork fprintf fputc fputs fread free
    freopen frexp fscanf fseek ftell fwrite gamma getc getchar getenv gets gettext gmtime hypot ilogb imaxabs
    index isalnum isalpha isascii isblank iscntrl isdigit isgraph isinf islower isnan isprint ispunct isspace
    isupper isxdigit j0 j1 jn labs ldexp ldiv lgamma lgamma_r lgammaf_r lgammal_r llabs llrint llround localtime
    log log10 log1p log2 logb longjmp lrint lround malloc memchr memcmp memcpy memmove mempcpy memset mktime
    modf nan nearbyint nextafter nexttoward perror pow pow10 printf putc putchar puts qsort raise rand read
    realloc remainder remove remquo rename rewind rindex rint round roundeven scalb scalbln scalbn scanf setbuf
    setjmp setlocale signal sin sincos sinh snprintf sprintf sqrt srand sscanf stderr stdin stdout stpcpy
    strcasecmp strcat strchr strcmp strcoll strcpy strcspn strdup strerror strftime strlen strncasecmp strncat
    strncmp strncpy strnlen strpbrk strrchr strspn strstr strtod strtok strtol strtoul strxfrm system tan tanh
    tgamma time tmpfile tmpnam toascii tolower toupper towlower towupper trunc ungetc vfprintf vfscanf vprintf
    vscanf vsnprintf vsprintf vsscanf write y0 y1 yn)";

/// Words of Python 3.
inline constexpr std::string_view words_of_python = R"(
    False None True and as assert async await break class continue def del elif else except finally for from global if
    import in is lambda nonlocal not or pass raise return try while with yield)";

/// Words of SystemVerilog, which include those of Verilog.
inline constexpr std::string_view words_of_verilog = R"(
    accept_on alias always always_comb always_ff always_latch and assert assign assume automatic before begin bind bins
    binsof bit break buf bufif0 bufif1 byte case casex casez cell chandle checker class clocking cmos config const
    constraint context continue cover covergroup coverpoint cross deassign default defparam design disable dist do edge
    else end endcase endchecker endclass endclocking endconfig endfunction endgenerate endgroup endinterface endmodule
    endpackage endprimitive endprogram endproperty endsequence endspecify endtable endtask enum event eventually expect
    export extends extern final first_match for force foreach forever fork forkjoin function generate genvar global
    highz0 highz1 if iff ifnone ignore_bins illegal_bins implements implies import incdir include initial inout input
    inside instance int integer interconnect interface intersect join join_any join_none large let liblist library
    local localparam logic longint macromodule matches medium modport module nand negedge nettype new nexttime nmos nor
    noshowcancelled not notif0 notif1 null or output package packed parameter pmos posedge primitive priority program
    property protected pull0 pull1 pulldown pullup pulsestyle_ondetect pulsestyle_onevent pure rand randc randcase
    randsequence rcmos real realtime ref reg reject_on release repeat restrict return rnmos rpmos rtran rtranif0
    rtranif1 s_always s_eventually s_nexttime s_until s_until_with scalared sequence shortint shortreal showcancelled
    signed small soft solve specify specparam static string strong strong0 strong1 struct super supply0 supply1
    sync_accept_on sync_reject_on table tagged task this throughout time timeprecision timeunit tran tranif0 tranif1
    tri tri0 tri1 triand trior trireg type typedef union unique unique0 unsigned until until_with untyped use uwire var
    vectored virtual void wait wait_order wand weak weak0 weak1 while wildcard wire with within wor xnor xor)";

/// Words of VHDL up to 2019.
inline constexpr std::string_view words_of_vhdl = R"(
    abs access after alias all and architecture array assert assume assume_guarantee attribute begin block body buffer
    bus case component configuration constant context cover default disconnect downto else elsif end entity exit
    fairness file for force function generate generic group guarded if impure in inertial inout is label library
    linkage literal loop map mod nand new next nor not null of on open or others out package parameter port postponed
    private procedure process property protected pure range record register reject release rem report restrict
    restrict_guarantee return rol ror select sequence severity shared signal sla sll sra srl strong subtype then to
    transport type unaffected units until use variable view vmode vprop vunit wait when while with xnor xor)";

} // namespace kvrimage
