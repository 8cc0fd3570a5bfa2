#include "scriptloops.h"

namespace {

constexpr ScriptLoop kLoops[] = {
    {
        .name = "sum",
        .zorbet = {"x=0\n", "x=(x+i)%1000003\n", "x"},
        .tcl = {"set x 0", "set x [expr {($x + $i) % 1000003}]", "x"},
        .lua = {"x = 0", "x = (x + i) % 1000003", "x"},
    },
    {
        .name = "branch",
        .zorbet = {"a=1\nb=0\n", "a=(a*3+i)%1000003\nif a<500000\n[\nb=b+1\n]\nelse\n[\nb=b-1\n]\n",
                   "b"},
        .tcl = {"set a 1; set b 0",
                "set a [expr {($a * 3 + $i) % 1000003}]\n"
                "if {$a < 500000} {incr b} else {incr b -1}",
                "b"},
        .lua = {"a = 1; b = 0",
                "a = (a * 3 + i) % 1000003\n"
                "if a < 500000 then b = b + 1 else b = b - 1 end",
                "b"},
    },
    {
        .name = "procedure",
        .zorbet = {"x=0\nprocedure add p q\n[\nx=(x+p+q)%1000003\n]\n", "call add i k\n", "x"},
        .tcl = {"set x 0\n"
                "proc add {p q} {global x; set x [expr {($x + $p + $q) % 1000003}]}",
                "add $i $k", "x"},
        .lua = {"x = 0\n"
                "function add(p, q) x = (x + p + q) % 1000003 end",
                "add(i, k)", "x"},
    },
    {
        .name = "string",
        .zorbet = {"s=\"\"\n", "s=s+\"ab\"\nif ~s>63\n[\ns=s|33\n]\n", "s"},
        .tcl = {"set s {}",
                "append s ab\n"
                "if {[string length $s] > 63} {set s [string range $s 32 end]}",
                "s"},
        .lua = {"s = ''",
                "s = s .. 'ab'\n"
                "if #s > 63 then s = s:sub(33) end",
                "s"},
    },
    {
        .name = "element",
        .zorbet = {"", "j=i%100\nitem.j=i\n", "item.7"},
        .tcl = {"", "set j [expr {$i % 100}]\nset item($j) $i", "item(7)"},
        .lua = {"item = {}", "j = i % 100\nitem[j] = i", "item[7]"},
    },
    {
        .name = "real",
        .zorbet = {"x=1\n", "x=x/3+i*0.5\n", "x"},
        .tcl = {"set x 1.0", "set x [expr {$x / 3 + $i * 0.5}]", "x"},
        .lua = {"x = 1.0", "x = x / 3 + i * 0.5", "x"},
    },
};

} // namespace

std::span<const ScriptLoop> scriptLoops() { return kLoops; }
