# Generated companies.
target_sources(krnqb_embedded PRIVATE
  company_generator.cpp
  company_synthesis_account_choices.cpp
  company_synthesis_accounts.cpp
  company_synthesis_business.cpp
  company_synthesis_calendar.cpp
  company_synthesis_company.cpp
  company_synthesis_draft.cpp
  company_synthesis_item_text.cpp
  company_synthesis_items.cpp
  company_synthesis_list_text.cpp
  company_synthesis_names.cpp
  company_synthesis_obligations.cpp
  company_synthesis_people.cpp
  company_synthesis_purchase_lines.cpp
  company_synthesis_purchases.cpp
  company_synthesis_routine.cpp
  company_synthesis_sale_lines.cpp
  company_synthesis_sales.cpp
  company_synthesis_text.cpp)
