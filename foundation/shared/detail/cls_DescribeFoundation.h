#pragma once

class cls_ClassRegistrar;

/// Describes the foundation's own persistent classes.
void cls_DescribeFoundation(cls_ClassRegistrar& registrar);

/// Records the foundation's archive components; what was recorded stays when this throws.
void cls_InsertFoundationComponents();
void cls_WithdrawFoundationComponents() noexcept;
