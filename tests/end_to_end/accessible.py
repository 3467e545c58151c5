# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""Small questions and deeds on the accessibility bus.

What the bus tells is never kept: every question goes to the program, so that an answer is what is
on the screen now.
"""

import pyatspi
from gi.repository import Atspi

# Their children are cells or names, of which there may be many thousands.
UNENTERED = {pyatspi.ROLE_TABLE, pyatspi.ROLE_LIST, pyatspi.ROLE_TREE}


def application(process):
    """The application of process on the bus; None while it is not there."""
    desktop = pyatspi.Registry.getDesktop(0)
    desktop.setCacheMask(Atspi.Cache.NONE)
    for index in range(desktop.childCount):
        candidate = desktop[index]
        if candidate and candidate.get_process_id() == process:
            candidate.setCacheMask(Atspi.Cache.NONE)
            return candidate
    return None


def walk(node):
    """node and everything below it, top down, but for cells and entries of lists."""
    yield node
    if node.getRole() in UNENTERED:
        return
    for index in range(node.childCount):
        child = node[index]
        if child:
            yield from walk(child)


def find(node, name, roles):
    """What is called name and has one of roles, at or below node; None if nothing."""
    return next((each for each in walk(node) if each.name == name and each.getRole() in roles),
                None)


def has(node, state):
    """True if node is in state, a STATE_ of pyatspi."""
    return node.getState().contains(state)


def text(node):
    """The whole text of a field or a text view."""
    return node.queryText().getText(0, -1)


def actions(node):
    """The names of what can be done to node; empty if nothing."""
    try:
        action = node.queryAction()
    except NotImplementedError:
        return []
    return [action.getName(index) for index in range(action.nActions)]


def act(node, name):
    """Does name to node; AssertionError if it is not among its actions."""
    offered = actions(node)
    if name not in offered:
        raise AssertionError(f"{node} offers {offered}, not {name!r}")
    node.queryAction().doAction(offered.index(name))


def picture(node, depth=0):
    """The tree below node as indented lines, for somebody who looks into a failure."""
    try:
        states = " ".join(sorted(pyatspi.stateToString(state).removeprefix("STATE_").lower()
                                 for state in node.getState().getStates()))
        line = f"{'  ' * depth}{node.getRoleName()} {node.name!r} {actions(node)} {states}"
        children = [] if node.getRole() in UNENTERED else [
            node[index] for index in range(node.childCount)]
    except Exception as error:  # pylint: disable=broad-except # the tree may go while it is drawn
        return f"{'  ' * depth}gone: {error}"
    return "\n".join([line] + [picture(child, depth + 1) for child in children if child])
