#include "document/publish_settings.h"

#include "objects/field_visitor.h"

void TeskPublishSettings::SetLocation(const ZoString& location) {
    if (location == location_)
        return;
    location_ = location;
    confirmOverwrite_ = true;
}

void TeskPublishSettings::VisitFields(TeskFieldVisitor& visitor) {
    ZoString location = location_;
    visitor.Field("location", location);
    visitor.Field("reserved", reserved);
    visitor.Field("embedHTML", embedHTML);
    visitor.Field("reservedFlag", reservedFlag);
    visitor.Field("testImmediately", testImmediately);
    visitor.Field("offsetForMovieClip", offsetForMovieClip);
    if (visitor.IsReading()) {
        location_ = location;
        confirmOverwrite_ = true;
    }
}
