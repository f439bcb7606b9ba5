import sys

from .command_line import main

sys.exit(main())
