"""Runs the scenarios of one group inside the session that session.py has made."""

import sys
import unittest


def main(group):
    """Runs every scenario of test_group.py; returns 0 if all passed and there was one."""
    suite = unittest.defaultTestLoader.loadTestsFromName(f"test_{group}")
    result = unittest.TextTestRunner(stream=sys.stdout, verbosity=2).run(suite)
    return 0 if result.wasSuccessful() and result.testsRun > 0 else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
