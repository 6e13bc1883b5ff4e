OSTREL_SCRIPT = "none.os"
