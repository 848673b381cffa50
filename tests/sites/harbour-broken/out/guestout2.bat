ftpput -s local:c:/site/index.htm -d harbour:/public/index.htm
ftpput -s local:c:/site/boats.htm -d harbour:/public/boats.htm
ftpput -s local:c:/site/harbour-office/tide-tables-for-2004.htm -d harbour:/public/harbour-office/tide-tables-for-2004.htm
