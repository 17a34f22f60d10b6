// Whether the user has changed a document since somebody looked at it.
#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <memory>

namespace korvane::calc {

class DocumentChanges {
public:
    explicit DocumentChanges(
        const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& model);

    // How many changes there have been; silenced writes are none.
    unsigned long count() const { return *count_; }

private:
    std::shared_ptr<unsigned long> count_;  // the office holds on to it, too
};

}  // namespace korvane::calc
