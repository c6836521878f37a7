#include "ann/annC_AnnotationClient.h"

constinit annC_AnnotationClient* annC_AnnotationClient::singleton = nullptr;

annC_AnnotationClient::annC_AnnotationClient() = default;

annC_AnnotationClient::~annC_AnnotationClient() = default;

annC_AnnotationClient& annC_AnnotationClient::Instance() {
    return omi_Singleton<annC_AnnotationClient>::Instance();
}
