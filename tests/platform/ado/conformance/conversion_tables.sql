create table cv (id int, b bigint null, f float null, bt bit null, dt datetime null, d date null, n numeric(18,2) null,
  m money null, i int null, s smallint null, v varchar(10) null, c char(5) null)
go
create table cw (id int, v varchar(20) null)
go
insert into cw values (1,''),(2,'12'),(3,' 12 '),(4,'7'),(5,null),(6,'-3')
go
create table ct (id int, c char(5) null, v varchar(20) null)
go
insert into ct values (1,'ab','ab'),(2,'AB','AB  '),(3,'ab ',' ab'),(4,'',''),(5,NULL,NULL),(6,'a%b','a%b'),(7,'a_b','a_b'),(8,'a[b','a[b'),(9,'a]b','a]b'),(10,'a\b','a\b'),(11,'axb','axb'),(12,'a-b','a-b'),(13,'a^b','a^b')
go
create table ci (id int identity(1,1) not null primary key, v varchar(5) not null, c2 char(2) null, n numeric(5,2) null)
go
create procedure cp @a int, @b varchar(5) as select a=@a,b=@b,lb=len(@b)
go
create procedure cp3 @a varchar(20), @b varchar(20), @c varchar(20) as select a=@a,b=@b,c=@c
go
create procedure cpd @d datetime as select d=@d
go
create procedure cpi @a int as select a=@a
go
create procedure cpdef @a int = 5, @b varchar(5) = 'x' as select a=@a,b=@b
go
