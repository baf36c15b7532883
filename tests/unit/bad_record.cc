// A library with a record type that no codec takes.
#include "pouch.h"

extern "C" {
rcode pouch_register_all_otu_ma_pouchs();
}

static const pouch_descriptor bad{1, "bad", 1, "bad.dll", nullptr, "", "$1=Z;", 0, 0};

rcode pouch_register_all_otu_ma_pouchs() {
    rcode status = pouch_register_start();
    if (status == RC_OK)
        status = pouch_register(&bad);
    if (status != RC_OK)
        pouch_register_abort();
    return status == RC_OK ? pouch_register_end() : status;
}
