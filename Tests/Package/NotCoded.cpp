// Saves what nothing says how to code.

#include <CorbelKit/Services/UserDataFile.h>

struct Plain {
    int number;
};

void save(const Plain& value) {
    static_cast<void>(CorbelKit::PropertyListEncoder::binary().encode(value));
}

void load(const Platform::URL& url) {
    static_cast<void>(CorbelKit::UserDataFile::load<Plain>(url));
}
