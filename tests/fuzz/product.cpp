// Any bytes as a document file: reading gives a reason or a product without a fault, and leaves the
// file as it is.
#include "tests/fuzz/Require.h"
#include "workbench/document/product/ProductCheck.h"
#include "workbench/document/product/ProductFile.h"

#include <unistd.h>

#include <cstddef>
#include <cstdint>

using namespace qor::document;

namespace {

/// A file of the process, gone when it ends.
class File {
public:
    File()
        : path_(std::filesystem::temp_directory_path() /
                ("qor-fuzz-product-" + std::string(6, 'X'))) {
        descriptor_ = mkstemp(path_.data());
        require(descriptor_ >= 0, "there is room for a file");
    }

    ~File() {
        close(descriptor_);
        unlink(path_.c_str());
    }

    File(const File&) = delete;
    File& operator=(const File&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }

    void fill(const std::uint8_t* data, std::size_t size) const {
        require(ftruncate(descriptor_, 0) == 0, "the file can be emptied");
        require(pwrite(descriptor_, data, size, 0) == static_cast<ssize_t>(size),
                "the file can be written");
    }

private:
    std::string path_;
    int descriptor_ = -1;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const File file;
    file.fill(data, size);
    const Result<Product> product = readProduct(file.path());
    if (!product)
        require(!product.failure().text.empty(), "a failure has a reason");
    else
        require(!findFault(product.value()), "a product that was read has no fault");
    return 0;
}
