-- The cashier's role.
USE BILLING
GO

CREATE ROLE cashier
GO
