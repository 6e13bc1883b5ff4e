OSTREL_SCRIPT = "other.os"
