# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""The table "Bytes" as it can be seen."""

from accessible import act

BYTES_IN_ROW = 16
CHARACTERS = 17
COLUMNS = 18


class Grid:
    """The table, asked anew for everything."""

    def __init__(self, node):
        self.node = node

    def rows(self):
        """How many rows there are."""
        return self.node.queryTable().nRows

    def at(self, row, column):
        """The cell of row and column, both counted from 0."""
        return self.node.queryTable().getAccessibleAt(row, column)

    def row(self, row):
        """What row shows, its cells separated by a bar."""
        table = self.node.queryTable()
        return "|".join(table.getAccessibleAt(row, column).name for column in range(COLUMNS))

    def column(self, column):
        """What the cells of column show, from the top down."""
        return [self.at(row, column).name for row in range(self.rows())]

    def open_cell(self, row, column):
        """Opens a cell for typing."""
        act(self.at(row, column), "Press")


def row_of_bytes(image, row):
    """What row row must show of image, each of whose bytes is one character."""
    start = row * BYTES_IN_ROW
    part = image[start:start + BYTES_IN_ROW]
    cells = [f"{byte:02X}" for byte in part] + ["XX"] * (BYTES_IN_ROW - len(part))
    letters = "".join(character if character >= " " else " "
                      for character in part.decode("latin-1"))
    return "|".join([f"{start:04X}", *cells, letters])
