-- A small chart of accounts to begin with, and the accounts of the voucher kinds.
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('1', 0, '1', 'ASSETS', 'HH', 1, null, null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('1', 1, '1.1', 'CASH AND BANK', 'HD', null, null, null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('1.1', 1, '1.1.1', 'CASH IN HAND', 'DD', null, '2024-01-01', null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('1.1', 2, '1.1.2', 'CITY BANK', 'DD', null, '2024-01-01', 'B')
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('1', 2, '1.2', 'STUDENTS', 'HD', null, null, null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('2', 0, '2', 'LIABILITIES', 'HH', 2, null, null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('2', 1, '2.1', 'SUPPLIERS', 'HD', null, null, null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('2.1', 1, '2.1.1', 'BOOK AND PAPER HOUSE', 'DD', null, '2024-01-01', 'S')
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('3', 0, '3', 'CAPITAL', 'HH', 3, null, null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('3', 1, '3.1', 'CAPITAL ACCOUNTS', 'HD', null, null, null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('3.1', 1, '3.1.1', 'CAPITAL OF THE INSTITUTE', 'DD', null, '2024-01-01', null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('4', 0, '4', 'INCOME', 'HH', 4, null, null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('4', 1, '4.1', 'FEES', 'HD', null, null, null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('4.1', 1, '4.1.1', 'TUITION FEE', 'DD', null, '2024-01-01', null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('4.1', 2, '4.1.2', 'REGISTRATION FEE', 'DD', null, '2024-01-01', null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('5', 0, '5', 'EXPENSES', 'HH', 5, null, null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('5', 1, '5.1', 'OFFICE EXPENSES', 'HD', null, null, null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('5.1', 1, '5.1.1', 'RENT', 'DD', null, '2024-01-01', null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('5.1', 2, '5.1.2', 'ELECTRICITY', 'DD', null, '2024-01-01', null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('5.1', 3, '5.1.3', 'SALARIES', 'DD', null, '2024-01-01', null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('5.1', 4, '5.1.4', 'STATIONERY', 'DD', null, '2024-01-01', null)
insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OrderStatus, openDate, BStatus) values ('5.1', 5, '5.1.5', 'TELEPHONE', 'DD', null, '2024-01-01', null)
GO
update VouSetting set AcCode = (select max(RowID) from Accounts where AcNodes = '1.1.1'), Fix = 'Y' where VouStatus = 'CP'
update VouSetting set AcCode = (select max(RowID) from Accounts where AcNodes = '1.1.1'), Fix = 'Y' where VouStatus = 'CR'
update VouSetting set AcCode = (select max(RowID) from Accounts where AcNodes = '1.1.1'), Fix = 'Y' where VouStatus = 'RI'
update VouSetting set AcCode = (select max(RowID) from Accounts where AcNodes = '1.1.2'), Fix = 'N' where VouStatus = 'BP'
update VouSetting set AcCode = (select max(RowID) from Accounts where AcNodes = '1.1.2'), Fix = 'N' where VouStatus = 'BR'
update VouSetting set AcCode = (select max(RowID) from Accounts where AcNodes = '1.2') where VouStatus = 'IR'
