#include "Benches.h"
#include "Table.h"

void benchDesktop(Table &table) {
    table.gap("start-up to first frame", "Okteta", "no X library to look with");
}
