OSTREL_SCRIPT = "another.os"
